/// What the model says about a value.
#pragma once

#include <string>
#include <string_view>

#include "configuration/document.h"

/// What to write instead of a value that is none of `leaf`: "; write a number in 1..255", or what
/// the model itself says about it.
std::string allowed_instead(const lysc_node& leaf);

/// Why a value written as `kind` is none of `leaf`, or empty when it may be one: RFC 7951 writes
/// numbers of up to 32 bits as numbers, and longer ones as strings.
std::string wrong_kind(const lysc_node& leaf, ValueKind kind, std::string_view text);

/// Whether `text` is a value of `leaf`, as far as its type tells.
bool is_value(const lysc_node& leaf, std::string_view text);

/// The one text of all that mean the same value of `leaf`; `text` itself when it is no value.
std::string canonical_value(const lysc_node& leaf, std::string_view text);

/// How RFC 7951 writes the value `text` of `leaf`, which was read as `kind`.
ValueKind json_kind(const lysc_node& leaf, ValueKind kind, std::string_view text);
