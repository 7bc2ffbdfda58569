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

/// A value of a leaf, and the one text that stands for it.
class CanonicalValue {
  public:
    /// Reads `text`. False when the leaf's type does not allow it.
    bool read(const SchemaNode& leaf, std::string_view text);

    /// Lies in the text that was read, or in this object.
    std::string_view text() const { return text_; }
    /// The value; that of a C_BUF is `kept`, a copy of text() with a NUL behind it.
    confd_value_t value(std::string_view kept) const {
        return value_.type == C_BUF ? text_value(kept) : value_;
    }

  private:
    confd_value_t value_;
    std::string_view text_;
    std::array<char, INET6_ADDRSTRLEN + sizeof "/128"> buffer_;
};

/// The C_XMLTAG of `schema`.
inline confd_value_t tag_of(const SchemaNode& schema) {
    confd_value_t tag;
    tag.type = C_XMLTAG;
    tag.val.xmltag = &schema;
    return tag;
}

}  // namespace local_platform
