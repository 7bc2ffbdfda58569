/// The rules, each exported under its plain name.
#pragma once

#include "rule_conventions.h"

#pragma GCC visibility push(default)

extern "C" {
ValidationHandler validate_vrrp_auth_simple_text_passwd;
ValidationHandler validate_vrrp_ipv4_addr;
ValidationHandler validate_vrrp_ipv4_addr_update;
ValidationHandler validate_vrrp_l3_ipv6_addr;
ValidationHandler validate_vrrp_l3_ipv6_link_local_addr;
ValidationHandler validate_vrrp_ipv6_link_local_addr;
ValidationHandler validate_vrrp_lower_layer;
ValidationHandler validate_vrrp_lower_layer_update;
ValidationHandler validate_vrrp_secondary_ipv4_addr;
ValidationHandler validate_vrrp_version;
ValidationHandler validate_vrrp_vr_id;
ValidationHandler validate_vrrp_vrf;
}

#pragma GCC visibility pop
