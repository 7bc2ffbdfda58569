#include "configuration/source_text.h"

#include <algorithm>

#include "text/utf8.h"

namespace {

constexpr std::string_view kByteOrderMark = "\xef\xbb\xbf";

}  // namespace

std::size_t byte_order_mark_size(std::string_view text) {
    return text.substr(0, kByteOrderMark.size()) == kByteOrderMark ? kByteOrderMark.size() : 0;
}

void SourceText::hide(std::size_t begin, std::size_t end) {
    secrets_.push_back({begin, end});
}

const std::vector<std::uint32_t>& SourceText::line_begins() const {
    std::call_once(once_, [this] {
        line_begins_.push_back(static_cast<std::uint32_t>(byte_order_mark_size(bytes_)));
        for (std::size_t end = bytes_.find('\n'); end != std::string::npos;
             end = bytes_.find('\n', end + 1)) {
            line_begins_.push_back(static_cast<std::uint32_t>(end + 1));
        }
    });
    return line_begins_;
}

Location SourceText::location(std::size_t offset) const {
    const auto& begins = line_begins();
    const auto next = std::upper_bound(begins.begin() + 1, begins.end(), offset);
    const std::size_t begin = *std::prev(next);
    const std::string_view before = bytes().substr(begin, offset > begin ? offset - begin : 0);
    return {name_, static_cast<std::size_t>(next - begins.begin()), 1 + count_characters(before)};
}

std::size_t SourceText::line_count() const {
    const auto& begins = line_begins();
    return begins.size() - (begins.back() == bytes_.size() ? 1 : 0);
}

std::string SourceText::line(std::size_t number) const {
    const std::size_t begin = line_begins()[number - 1];
    std::size_t end = std::min(bytes_.find('\n', begin), bytes_.size());
    end -= end > begin && bytes_[end - 1] == '\r' ? 1 : 0;
    auto secret = std::partition_point(secrets_.begin(), secrets_.end(),
                                       [&](const Range& one) { return one.end <= begin; });
    std::string shown;
    for (std::size_t at = begin; at < end; ++at) {
        while (secret != secrets_.end() && secret->end <= at) {
            ++secret;
        }
        const bool is_secret = secret != secrets_.end() && secret->begin <= at;
        if (!is_secret) {
            shown += bytes_[at];
        } else if (begins_character(bytes_[at])) {
            shown += kMask;
        }
    }
    return shown;
}
