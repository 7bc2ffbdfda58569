/// What the model says about a value.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>

struct lysc_node;
struct lysc_type;

/// How a value is written. XML has texts only.
enum class ValueKind : std::uint8_t { text, string, number, boolean, null };

/// The type of `leaf`, or leaf-list; of a leafref that of the leaf it refers to.
const lysc_type& type_of(const lysc_node& leaf);

/// What to write instead of a value that is none of `leaf`: "; write a number in 1..255", or what
/// the model itself says about it.
std::string allowed_instead(const lysc_node& leaf);

/// Why a value written as `kind` is none of `leaf`, or empty when it may be one: RFC 7951 writes
/// numbers of up to 32 bits as numbers, and longer ones as strings.
std::string wrong_kind(const lysc_node& leaf, ValueKind kind, std::string_view text);

/// Whether `text` is a value of `leaf`, as far as its type tells.
bool is_value(const lysc_node& leaf, std::string_view text);
