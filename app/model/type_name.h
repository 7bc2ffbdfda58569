/// What the names in a model say.
#pragma once

#include <string_view>
#include <utility>

#include "schema_node.h"

inline std::string_view without_prefix(std::string_view name) {
    const std::size_t colon = name.find(':');
    return colon == std::string_view::npos ? name : name.substr(colon + 1);
}

/// What the platform holds a value as whose type has `name` and is a string to YANG: an address or,
/// for every other one, its text.
inline confd_vtype text_type(std::string_view name) {
    static constexpr std::pair<std::string_view, confd_vtype> kAddressTypes[] = {
        {"ipv4-address-no-zone", C_IPV4},
        {"ipv6-address-no-zone", C_IPV6},
        {"ipv4-address-and-prefix-length", C_IPV4_AND_PLEN},
        {"ipv6-address-and-prefix-length", C_IPV6_AND_PLEN},
    };
    for (const auto& [type_name, type] : kAddressTypes) {
        if (type_name == without_prefix(name)) {
            return type;
        }
    }
    return C_BUF;
}
