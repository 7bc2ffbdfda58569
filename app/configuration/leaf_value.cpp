#include "configuration/leaf_value.h"

#include <libyang/libyang.h>
#include <libyang/plugins_types.h>

#include <algorithm>

namespace {

constexpr LY_ARRAY_COUNT_TYPE kManyNames = 16;  // more are no help

template <typename Type>
const Type& as(const lysc_type& type) {
    return reinterpret_cast<const Type&>(type);
}

const lysc_type& type_of(const lysc_node& leaf) {
    const lysc_type& type = leaf.nodetype == LYS_LEAF
                                ? *reinterpret_cast<const lysc_node_leaf&>(leaf).type
                                : *reinterpret_cast<const lysc_node_leaflist&>(leaf).type;
    return type.basetype == LY_TYPE_LEAFREF ? *as<lysc_type_leafref>(type).realtype : type;
}

/// "1..5 | 7"; of signed numbers when `is_signed`.
std::string parts_of(const lysc_range& range, bool is_signed) {
    std::string text;
    LY_ARRAY_COUNT_TYPE i = 0;
    LY_ARRAY_FOR(range.parts, i) {
        const auto& part = range.parts[i];
        const std::string low =
            is_signed ? std::to_string(part.min_64) : std::to_string(part.min_u64);
        const std::string high =
            is_signed ? std::to_string(part.max_64) : std::to_string(part.max_u64);
        text.append(text.empty() ? "" : " | ").append(low);
        if (high != low) {
            text.append("..").append(high);
        }
    }
    return text;
}

/// `number` with the decimal point that YANG keeps apart from it.
std::string decimal(int64_t number, std::size_t fraction_digits) {
    std::string digits = std::to_string(number < 0 ? -number : number);
    if (digits.size() <= fraction_digits) {
        digits.insert(0, fraction_digits + 1 - digits.size(), '0');
    }
    digits.insert(digits.size() - fraction_digits, ".");
    return (number < 0 ? "-" : "") + digits;
}

std::string allowed_decimals(const lysc_type_dec& type) {
    std::string text =
        "a number with at most " + std::to_string(type.fraction_digits) + " digits after the point";
    if (type.range == nullptr) {
        return text;
    }
    LY_ARRAY_COUNT_TYPE i = 0;
    LY_ARRAY_FOR(type.range->parts, i) {
        const auto& part = type.range->parts[i];
        text += (i == 0 ? " in " : " | ") + decimal(part.min_64, type.fraction_digits) + ".." +
                decimal(part.max_64, type.fraction_digits);
    }
    return text;
}

std::string allowed_numbers(const lysc_type& type, const char* whole_range) {
    const lysc_range* const range = as<lysc_type_num>(type).range;
    const bool is_signed = type.basetype >= LY_TYPE_DEC64;
    return "a number in " + (range == nullptr ? whole_range : parts_of(*range, is_signed));
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

std::string names_of(const lysc_type_bitenum_item* items) {
    std::string text;
    LY_ARRAY_COUNT_TYPE i = 0;
    LY_ARRAY_FOR(items, i) {
        text += (i == 0 ? "" : ", ") + std::string(i < kManyNames ? items[i].name : "...");
        if (i == kManyNames) {
            break;
        }
    }
    return text;
}

std::string identities_of(const lysc_type_identityref& type) {
    std::string text;
    LY_ARRAY_COUNT_TYPE i = 0;
    LY_ARRAY_FOR(type.bases, i) {
        text += (i == 0 ? "an identity of " : " and ") + std::string(type.bases[i]->name);
    }
    return text;
}

std::string allowed(const lysc_type& type) {
    switch (type.basetype) {
        case LY_TYPE_UINT8:
            return allowed_numbers(type, "0..255");
        case LY_TYPE_UINT16:
            return allowed_numbers(type, "0..65535");
        case LY_TYPE_UINT32:
            return allowed_numbers(type, "0..4294967295");
        case LY_TYPE_UINT64:
            return allowed_numbers(type, "0..18446744073709551615");
        case LY_TYPE_INT8:
            return allowed_numbers(type, "-128..127");
        case LY_TYPE_INT16:
            return allowed_numbers(type, "-32768..32767");
        case LY_TYPE_INT32:
            return allowed_numbers(type, "-2147483648..2147483647");
        case LY_TYPE_INT64:
            return allowed_numbers(type, "-9223372036854775808..9223372036854775807");
        case LY_TYPE_DEC64:
            return allowed_decimals(as<lysc_type_dec>(type));
        case LY_TYPE_STRING:
            return allowed_strings(as<lysc_type_str>(type));
        case LY_TYPE_BOOL:
            return "true or false";
        case LY_TYPE_EMPTY:
            return "nothing";
        case LY_TYPE_ENUM:
            return "one of " + names_of(as<lysc_type_enum>(type).enums);
        case LY_TYPE_BITS:
            return "some of " + names_of(as<lysc_type_bits>(type).bits);
        case LY_TYPE_BINARY:
            return "base64";
        case LY_TYPE_IDENT:
            return identities_of(as<lysc_type_identityref>(type));
        case LY_TYPE_INST:
            return "the path of a node";
        case LY_TYPE_LEAFREF:
            return allowed(*as<lysc_type_leafref>(type).realtype);
        default:
            break;
    }
    std::string text;
    LY_ARRAY_COUNT_TYPE i = 0;
    LY_ARRAY_FOR(as<lysc_type_union>(type).types, i) {
        text += (i == 0 ? "" : ", or ") + allowed(*as<lysc_type_union>(type).types[i]);
    }
    return text;
}

ValueKind kind_of(const lysc_type& type) {
    switch (type.basetype) {
        case LY_TYPE_UINT8:
        case LY_TYPE_UINT16:
        case LY_TYPE_UINT32:
        case LY_TYPE_INT8:
        case LY_TYPE_INT16:
        case LY_TYPE_INT32:
            return ValueKind::number;
        case LY_TYPE_BOOL:
            return ValueKind::boolean;
        case LY_TYPE_EMPTY:
            return ValueKind::null;
        default:
            return ValueKind::string;
    }
}

/// Whether one of a union's types takes `text` as it is written.
bool takes(const lysc_node& leaf, const lysc_type& type, ValueKind kind, std::string_view text) {
    uint32_t hints = LYD_VALHINT_STRING | LYD_VALHINT_NUM64;
    if (kind != ValueKind::string) {
        hints = kind == ValueKind::number    ? LYD_VALHINT_DECNUM
                : kind == ValueKind::boolean ? LYD_VALHINT_BOOLEAN
                                             : LYD_VALHINT_EMPTY;
    }
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
    switch (kind) {
        case ValueKind::number:
            return "a number";
        case ValueKind::boolean:
            return "true or false without quotes";
        case ValueKind::null:
            return "[null]";
        default:
            return "a string in quotes";
    }
}

}  // namespace

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
    if (kind_of(type) == kind) {
        return {};
    }
    return std::string("is written as ") + name_of(kind) + "; write " + name_of(kind_of(type));
}

bool is_value(const lysc_node& leaf, std::string_view text) {
    const LY_ERR result = lyd_value_validate(leaf.module->ctx, &leaf, text.data(), text.size(),
                                             nullptr, nullptr, nullptr);
    return result == LY_SUCCESS || result == LY_EINCOMPLETE;
}

std::string canonical_value(const lysc_node& leaf, std::string_view text) {
    const lysc_type& type = type_of(leaf);
    if (type.basetype == LY_TYPE_STRING && type.plugin->store == lyplg_type_store_string) {
        return std::string(text);
    }
    const char* canonical = nullptr;
    const LY_ERR result = lyd_value_validate(leaf.module->ctx, &leaf, text.data(), text.size(),
                                             nullptr, nullptr, &canonical);
    if (canonical == nullptr || (result != LY_SUCCESS && result != LY_EINCOMPLETE)) {
        return std::string(text);
    }
    std::string value = canonical;
    lydict_remove(leaf.module->ctx, canonical);
    return value;
}

ValueKind json_kind(const lysc_node& leaf, ValueKind kind, std::string_view text) {
    const lysc_type* type = &type_of(leaf);
    if (type->basetype == LY_TYPE_UNION && kind != ValueKind::text) {
        return kind;
    }
    if (type->basetype == LY_TYPE_UNION) {
        lyd_value_validate(leaf.module->ctx, &leaf, text.data(), text.size(), nullptr, &type,
                           nullptr);
    }
    return kind_of(*type);
}
