/// Typed reading of keys and values. Include it last.
///
/// A value of an unexpected type means that the data model binds a rule to a node that it was not
/// written for; it stops the process in every build type. These are macros, so that the report
/// shows the rule's file, its full prototype and the value as the rule names it.
#pragma once

#undef NDEBUG
#include <cassert>

/// The text up to its first NUL; it belongs to the value.
#define BUF_TEXT(value) \
    (assert((value)->type == C_BUF), reinterpret_cast<const char*>((value)->val.buf.ptr))
#define ENUM_VALUE(value) (assert((value)->type == C_ENUM_VALUE), (value)->val.enumvalue)
#define UINT8_VALUE(value) (assert((value)->type == C_UINT8), (value)->val.u8)
#define IPV4_VALUE(value) (assert((value)->type == C_IPV4), (value)->val.ip)
#define IPV6_VALUE(value) (assert((value)->type == C_IPV6), (value)->val.ip6)
