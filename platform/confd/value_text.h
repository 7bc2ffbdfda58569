/// Values as text and back.
#pragma once

#include <algorithm>
#include <array>
#include <charconv>
#include <cstddef>
#include <cstring>
#include <optional>
#include <string>
#include <string_view>

#include "schema_node.h"

namespace local_platform {

/// Text cut to a caller's buffer, with the length that the whole would have had, as snprintf has
/// it.
class BoundedText {
  public:
    /// Writes at most `size` bytes to `buffer`, the terminating NUL included; none when `size` is
    /// 0.
    BoundedText(char* buffer, std::size_t size) : buffer_(buffer), size_(size) {}

    /// One in a caller's buffer, ended by its NUL before anything is appended.
    static BoundedText empty_in(char* buffer, int size) {
        BoundedText text(buffer, static_cast<std::size_t>(std::max(size, 0)));
        text.finish();
        return text;
    }

    void append(std::string_view text) {
        if (length_ < size_ && !text.empty()) {
            std::memcpy(buffer_ + length_, text.data(), std::min(text.size(), size_ - length_));
        }
        length_ += text.size();
    }

    void append_number(int number) {
        constexpr std::size_t kLongest = sizeof "-2147483648" - 1;
        if (length_ + kLongest <= size_) {
            char* const end = buffer_ + length_;
            length_ +=
                static_cast<std::size_t>(std::to_chars(end, end + kLongest, number).ptr - end);
            return;
        }
        std::array<char, kLongest> digits;
        const char* const end =
            std::to_chars(digits.data(), digits.data() + digits.size(), number).ptr;
        append({digits.data(), static_cast<std::size_t>(end - digits.data())});
    }

    /// Ends the text with its NUL and returns the whole length.
    int finish() {
        if (size_ > 0) {
            buffer_[std::min(length_, size_ - 1)] = '\0';
        }
        return static_cast<int>(length_);
    }

  private:
    char* buffer_;
    std::size_t size_;
    std::size_t length_ = 0;
};

/// The text of a C_BUF.
inline std::string_view text_of(const confd_value_t& value) {
    return {reinterpret_cast<const char*>(value.val.buf.ptr), value.val.buf.size};
}

/// A C_BUF of `text`, which must be NUL-terminated one byte behind.
confd_value_t text_value(std::string_view text);

/// The label of an enumeration's value in `leaf`; nothing when it has none, or without a leaf.
std::optional<std::string_view> enum_label(int32_t number, const SchemaNode* leaf);

/// Appends `value` as text; an enumeration as its number, since a bare value has no labels.
void append_value(BoundedText& out, const confd_value_t& value);

/// Reads `text` as a value of `leaf`'s type into `value`; a C_BUF points into `text`, which must be
/// NUL-terminated there. False when the type does not allow it.
bool parse_value(const SchemaNode& leaf, std::string_view text, confd_value_t& value);

/// The one text that stands for `text` as a value of `leaf`. False when the type does not allow it.
bool canonical_text(const SchemaNode& leaf, std::string_view text, std::string& canonical);

}  // namespace local_platform
