#include "files/source_text.h"

#include <algorithm>

#include "text/utf8.h"

namespace {

constexpr std::string_view kByteOrderMark = "\xef\xbb\xbf";
constexpr std::size_t kBlockSize = 4096;

}  // namespace

std::size_t byte_order_mark_size(std::string_view text) {
    return text.substr(0, kByteOrderMark.size()) == kByteOrderMark ? kByteOrderMark.size() : 0;
}

void SourceText::hide(std::size_t begin, std::size_t end) {
    secrets_.push_back({begin, end});
}

const SourceText::Index& SourceText::index() const {
    std::call_once(once_, [this] {
        index_.line_begins.push_back(static_cast<std::uint32_t>(byte_order_mark_size(bytes_)));
        for (std::size_t end = bytes_.find('\n'); end != std::string::npos;
             end = bytes_.find('\n', end + 1)) {
            index_.line_begins.push_back(static_cast<std::uint32_t>(end + 1));
        }
        std::size_t characters = 0;
        for (std::size_t at = 0; at <= bytes_.size(); at += kBlockSize) {
            index_.characters.push_back(static_cast<std::uint32_t>(characters));
            characters += count_characters(bytes().substr(at, kBlockSize));
        }
    });
    return index_;
}

std::size_t SourceText::characters_before(std::size_t offset) const {
    const std::size_t block = offset / kBlockSize * kBlockSize;
    return index().characters[offset / kBlockSize] +
           count_characters(bytes().substr(block, offset - block));
}

std::size_t SourceText::line_of(std::size_t offset) const {
    const auto& begins = index().line_begins;
    return static_cast<std::size_t>(std::upper_bound(begins.begin() + 1, begins.end(), offset) -
                                    begins.begin());
}

Location SourceText::location(std::size_t offset) const {
    const std::size_t line = line_of(offset);
    const std::size_t begin = index().line_begins[line - 1];
    const std::size_t before =
        characters_before(std::max(offset, begin)) - characters_before(begin);
    return {name_, line, 1 + before};
}

std::size_t SourceText::line_count() const {
    const auto& begins = index().line_begins;
    return begins.size() - (begins.back() == bytes_.size() ? 1 : 0);
}

SourceText::LinePart SourceText::part_of_line(std::size_t number, std::size_t column,
                                              std::size_t around) const {
    const std::size_t begin = index().line_begins[number - 1];
    std::size_t end = std::min(bytes_.find('\n', begin), bytes_.size());
    end -= end > begin && bytes_[end - 1] == '\r' ? 1 : 0;
    const std::size_t wanted = characters_before(begin) + std::max<std::size_t>(column, 1) - 1;
    const auto& characters = index().characters;
    const auto block = std::upper_bound(characters.begin(), characters.end(), wanted) - 1;
    std::size_t at =
        std::max(begin, static_cast<std::size_t>(block - characters.begin()) * kBlockSize);
    for (std::size_t left = wanted - characters_before(at); left > 0 && at < end; --left) {
        at = end_of_character(bytes_, at);
    }
    return {shown(std::max(begin, at - std::min(at, around)), at),
            shown(at, std::min(end, at + around))};
}

std::string SourceText::shown(std::size_t begin, std::size_t end) const {
    auto secret = std::partition_point(secrets_.begin(), secrets_.end(),
                                       [&](const Range& one) { return one.end <= begin; });
    std::string text;
    for (std::size_t at = begin; at < end; ++at) {
        while (secret != secrets_.end() && secret->end <= at) {
            ++secret;
        }
        const bool is_secret = secret != secrets_.end() && secret->begin <= at;
        if (!is_secret) {
            text += bytes_[at];
        } else if (begins_character(bytes_[at])) {
            text += kMask;
        }
    }
    return text;
}
