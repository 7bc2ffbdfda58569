/// Values as text and back.
#pragma once

#include <cstddef>
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

    void append(std::string_view text);
    /// Ends the text with its NUL and returns the whole length.
    int finish();

  private:
    char* buffer_;
    std::size_t size_;
    std::size_t length_ = 0;
};

/// Appends `value` as text; an enumeration as its label in `leaf`, or as its number without a leaf.
void append_value(BoundedText& out, const confd_value_t& value, const SchemaNode* leaf);

/// Reads `text` as a value of `leaf`'s type into `value`; a C_BUF points into `text`, which must be
/// NUL-terminated there. False when the type does not allow it.
bool parse_value(const SchemaNode& leaf, std::string_view text, confd_value_t& value);

/// The one text that stands for `text` as a value of `leaf`. False when the type does not allow it.
bool canonical_text(const SchemaNode& leaf, std::string_view text, std::string& canonical);

/// Appends a key as it stands between braces: quoted where it has to be.
void append_key(BoundedText& out, std::string_view key);

}  // namespace local_platform
