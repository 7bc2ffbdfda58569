/// One VRRP instance.
#pragma once

#include <cstdint>
#include <string>

namespace vrrp_app::config_valid {

/// The values of RouterVrrp::address_family.
constexpr int32_t kIpv4 = 4;
constexpr int32_t kIpv6 = 6;

/// The family as the data model and the operator's messages name it.
constexpr const char* family_name(int32_t address_family) {
    return address_family == kIpv4 ? "ipv4" : "ipv6";
}

struct RouterVrrp {
    uint8_t vr_id;
    int32_t address_family;
    std::string interface_key;  ///< the key of the VRRP interface entry that holds the instance
};

}  // namespace vrrp_app::config_valid
