#include "configuration/text_position.h"

#include <algorithm>

namespace {

constexpr std::string_view kByteOrderMark = "\xef\xbb\xbf";

bool begins_character(char byte) {
    return (static_cast<unsigned char>(byte) & 0xC0U) != 0x80U;
}

std::size_t column_of(std::string_view text, std::size_t line_begin, std::size_t offset) {
    const std::size_t begin = line_begin == 0 ? byte_order_mark_size(text) : line_begin;
    const std::string_view before = text.substr(begin, offset > begin ? offset - begin : 0);
    return 1 +
           static_cast<std::size_t>(std::count_if(before.begin(), before.end(), begins_character));
}

}  // namespace

std::size_t byte_order_mark_size(std::string_view text) {
    return text.substr(0, kByteOrderMark.size()) == kByteOrderMark ? kByteOrderMark.size() : 0;
}

Location position_in(const std::string& file, std::string_view text, std::size_t offset) {
    return LineIndex().position_in(file, text, offset);
}

Location LineIndex::position_in(const std::string& file, std::string_view text,
                                std::size_t offset) const {
    std::call_once(once_, [&] {
        begins_.push_back(0);
        for (std::size_t end = text.find('\n'); end != std::string_view::npos;
             end = text.find('\n', end + 1)) {
            begins_.push_back(static_cast<std::uint32_t>(end + 1));
        }
    });
    const auto next = std::upper_bound(begins_.begin(), begins_.end(), offset);
    return {file, static_cast<std::size_t>(next - begins_.begin()),
            column_of(text, *std::prev(next), offset)};
}
