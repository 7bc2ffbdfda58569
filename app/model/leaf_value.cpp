#include "model/leaf_value.h"

#include <libyang/libyang.h>
#include <libyang/plugins_types.h>

#include <algorithm>

namespace {

constexpr LY_ARRAY_COUNT_TYPE kManyNames = 16;  // more are no help

/// How RFC 7951 writes the values of a type that it does not write as strings, and what they are
/// without further restriction.
struct BaseType {
    LY_DATA_TYPE type;
    ValueKind kind;
    const char* allowed;
};
constexpr BaseType kBaseTypes[] = {
    {LY_TYPE_UINT8, ValueKind::number, "0..255"},
    {LY_TYPE_UINT16, ValueKind::number, "0..65535"},
    {LY_TYPE_UINT32, ValueKind::number, "0..4294967295"},
    {LY_TYPE_UINT64, ValueKind::string, "0..18446744073709551615"},
    {LY_TYPE_INT8, ValueKind::number, "-128..127"},
    {LY_TYPE_INT16, ValueKind::number, "-32768..32767"},
    {LY_TYPE_INT32, ValueKind::number, "-2147483648..2147483647"},
    {LY_TYPE_INT64, ValueKind::string, "-9223372036854775808..9223372036854775807"},
    {LY_TYPE_BOOL, ValueKind::boolean, "true or false"},
    {LY_TYPE_EMPTY, ValueKind::null, "nothing"},
    {LY_TYPE_BINARY, ValueKind::string, "base64"},
    {LY_TYPE_INST, ValueKind::string, "the path of a node"},
    {LY_TYPE_UNKNOWN, ValueKind::string, ""},  // every other
};

const BaseType& base_of(const lysc_type& type) {
    const BaseType* base = kBaseTypes;
    while (base->type != type.basetype && base->type != LY_TYPE_UNKNOWN) {
        ++base;
    }
    return *base;
}

template <typename Type>
const Type& as(const lysc_type& type) {
    return reinterpret_cast<const Type&>(type);
}

/// `number` with the decimal point that YANG keeps apart from it.
std::string decimal(int64_t number, std::size_t fraction_digits) {
    std::string digits = std::to_string(number < 0 ? -number : number);
    if (digits.size() <= fraction_digits) {
        digits.insert(0, fraction_digits + 1 - digits.size(), '0');
    }
    if (fraction_digits > 0) {
        digits.insert(digits.size() - fraction_digits, ".");
    }
    return (number < 0 ? "-" : "") + digits;
}

/// "1..5 | 7", of signed numbers when `is_signed`.
std::string parts_of(const lysc_range& range, bool is_signed, std::size_t fraction_digits = 0) {
    std::string text;
    LY_ARRAY_COUNT_TYPE i = 0;
    LY_ARRAY_FOR(range.parts, i) {
        const auto& part = range.parts[i];
        const auto limit = [&](int64_t number, uint64_t positive) {
            return is_signed ? decimal(number, fraction_digits) : std::to_string(positive);
        };
        const std::string low = limit(part.min_64, part.min_u64);
        const std::string high = limit(part.max_64, part.max_u64);
        text.append(text.empty() ? "" : " | ").append(low);
        text.append(high == low ? "" : ".." + high);
    }
    return text;
}

/// `message` on one line, without its full stop.
std::string sentence(std::string message) {
    std::replace(message.begin(), message.end(), '\n', ' ');
    message.erase(message.find_last_not_of(". ") + 1);
    return message;
}

std::string allowed_strings(const lysc_type_str& type) {
    std::string text = "a text";
    if (type.length != nullptr) {
        text += " of " + parts_of(*type.length, false) + " characters";
    }
    LY_ARRAY_COUNT_TYPE i = 0;
    LY_ARRAY_FOR(type.patterns, i) {
        const lysc_pattern& pattern = *type.patterns[i];
        text += (i == 0 ? " that " : " and ") +
                std::string(pattern.inverted != 0 ? "does not match " : "matches ") + pattern.expr;
    }
    return text;
}

/// The names of enumerations or bits.
template <typename Item>
std::string names_of(const Item* items) {
    std::string text;
    LY_ARRAY_COUNT_TYPE i = 0;
    LY_ARRAY_FOR(items, i) {
        if (i == kManyNames) {
            return text + ", ...";
        }
        text += (i == 0 ? "" : ", ") + std::string(items[i].name);
    }
    return text;
}

std::string allowed(const lysc_type& type) {
    const BaseType& base = base_of(type);
    std::string text;
    LY_ARRAY_COUNT_TYPE i = 0;
    switch (type.basetype) {
        case LY_TYPE_DEC64: {
            const auto& decimals = as<lysc_type_dec>(type);
            text = "a number with at most " + std::to_string(decimals.fraction_digits) +
                   " digits after the point";
            return decimals.range == nullptr
                       ? text
                       : text + " in " + parts_of(*decimals.range, true, decimals.fraction_digits);
        }
        case LY_TYPE_STRING:
            return allowed_strings(as<lysc_type_str>(type));
        case LY_TYPE_ENUM:
            return "one of " + names_of(as<lysc_type_enum>(type).enums);
        case LY_TYPE_BITS:
            return "some of " + names_of(as<lysc_type_bits>(type).bits);
        case LY_TYPE_IDENT:
            LY_ARRAY_FOR(as<lysc_type_identityref>(type).bases, i) {
                text += (i == 0 ? "an identity of " : " and ") +
                        std::string(as<lysc_type_identityref>(type).bases[i]->name);
            }
            return text;
        case LY_TYPE_LEAFREF:
            return allowed(*as<lysc_type_leafref>(type).realtype);
        case LY_TYPE_UNION:
            LY_ARRAY_FOR(as<lysc_type_union>(type).types, i) {
                text += (i == 0 ? "" : ", or ") + allowed(*as<lysc_type_union>(type).types[i]);
            }
            return text;
        case LY_TYPE_BOOL:
        case LY_TYPE_EMPTY:
        case LY_TYPE_BINARY:
        case LY_TYPE_INST:
            return base.allowed;
        default:
            break;
    }
    const lysc_range* const range = as<lysc_type_num>(type).range;
    return "a number in " +
           (range == nullptr ? base.allowed : parts_of(*range, base.allowed[0] == '-'));
}

/// Whether one of a union's types takes `text` as it is written.
bool takes(const lysc_node& leaf, const lysc_type& type, ValueKind kind, std::string_view text) {
    const uint32_t hints = kind == ValueKind::string    ? LYD_VALHINT_STRING | LYD_VALHINT_NUM64
                           : kind == ValueKind::number  ? LYD_VALHINT_DECNUM
                           : kind == ValueKind::boolean ? LYD_VALHINT_BOOLEAN
                                                        : LYD_VALHINT_EMPTY;
    const ly_ctx* const context = leaf.module->ctx;
    lyd_value value{};
    ly_err_item* error = nullptr;
    const LY_ERR result =
        type.plugin->store(context, &type, text.data(), text.size(), 0, LY_VALUE_JSON, nullptr,
                           hints, &leaf, &value, nullptr, &error);
    ly_err_free(error);
    if (result != LY_SUCCESS && result != LY_EINCOMPLETE) {
        return false;
    }
    type.plugin->free(context, &value);
    return true;
}

const char* name_of(ValueKind kind) {
    return kind == ValueKind::number    ? "a number"
           : kind == ValueKind::boolean ? "true or false without quotes"
           : kind == ValueKind::null    ? "[null]"
                                        : "a string in quotes";
}

}  // namespace

const lysc_type& type_of(const lysc_node& leaf) {
    const lysc_type& type = leaf.nodetype == LYS_LEAF
                                ? *reinterpret_cast<const lysc_node_leaf&>(leaf).type
                                : *reinterpret_cast<const lysc_node_leaflist&>(leaf).type;
    return type.basetype == LY_TYPE_LEAFREF ? *as<lysc_type_leafref>(type).realtype : type;
}

std::string allowed_instead(const lysc_node& leaf) {
    const lysc_type& type = type_of(leaf);
    if (type.basetype == LY_TYPE_STRING) {
        LY_ARRAY_COUNT_TYPE i = 0;
        LY_ARRAY_FOR(as<lysc_type_str>(type).patterns, i) {
            const char* const message = as<lysc_type_str>(type).patterns[i]->emsg;
            if (message != nullptr) {
                return ": " + sentence(message);
            }
        }
    }
    return "; write " + allowed(type);
}

std::string wrong_kind(const lysc_node& leaf, ValueKind kind, std::string_view text) {
    const lysc_type& type = type_of(leaf);
    if (kind == ValueKind::text) {
        return {};
    }
    if (type.basetype == LY_TYPE_UNION) {
        return takes(leaf, type, kind, text) ? "" : "is not a valid value; write " + allowed(type);
    }
    const ValueKind wanted = base_of(type).kind;
    return wanted == kind
               ? ""
               : std::string("is written as ") + name_of(kind) + "; write " + name_of(wanted);
}

bool is_value(const lysc_node& leaf, std::string_view text) {
    const LY_ERR result = lyd_value_validate(leaf.module->ctx, &leaf, text.data(), text.size(),
                                             nullptr, nullptr, nullptr);
    return result == LY_SUCCESS || result == LY_EINCOMPLETE;
}
