/// Values as text and back.
#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "schema_node.h"

namespace local_platform {

/// The C_XMLTAG of `schema`.
confd_value_t tag_of(const SchemaNode& schema);

/// The value that `text` is of `leaf`'s type; a C_BUF points into `text`, which must be
/// NUL-terminated one byte behind. A C_NOEXISTS when the type does not allow it.
confd_value_t value_of(const SchemaNode& leaf, std::string_view text);

/// The one text that stands for the same value as `text`; nothing when `leaf`'s type does not allow
/// it.
std::optional<std::string> canonical_text(const SchemaNode& leaf, std::string_view text);

/// `value` as text; an enumeration as its label in `leaf`, or without one as its number.
std::string value_text(const confd_value_t& value, const SchemaNode* leaf = nullptr);

/// Prints `text` to a caller's buffer, cut to it and NUL-terminated; returns the whole length.
int print(std::string_view text, char* buffer, int size);

}  // namespace local_platform
