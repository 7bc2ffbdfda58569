#include "vrrp_valid.h"

#include <cstdio>
#include <cstring>
#include <list>
#include <string>

#include "get_key_list.h"
#include "handlers.h"
#include "key_listing.h"

namespace {

constexpr const char* kValidationPoint = "vrrp_validation";
constexpr std::size_t kKeyBufferSize = 256;

struct ValidationEntry {
    ValidationHandler* handler;
    const char* name;
};

constexpr ValidationEntry kValidationTable[] = {
    {validate_vrrp_auth_simple_text_passwd, "vrrp_auth_passwd_validation"},
    {validate_vrrp_ipv4_addr, "vrrp_ipv4_addr_validation"},
    {validate_vrrp_ipv4_addr_update, "vrrp_ipv4_addr_update_validation"},
    {validate_vrrp_l3_ipv6_addr, "vrrp_l3_ipv6_addr_validation"},
    {validate_vrrp_l3_ipv6_link_local_addr, "vrrp_l3_ipv6_link_local_addr_validation"},
    {validate_vrrp_ipv6_link_local_addr, "vrrp_ipv6_link_local_addr_validation"},
    {validate_vrrp_lower_layer, "vrrp_lower_layer_validation"},
    {validate_vrrp_lower_layer_update, "vrrp_lower_layer_update_validation"},
    {validate_vrrp_secondary_ipv4_addr, "vrrp_secondary_ipv4_addr_validation"},
    {validate_vrrp_version, "vrrp_version_validation"},
    {validate_vrrp_vr_id, "vrrp_vr_id_validation"},
    {validate_vrrp_vrf, "vrrp_vrf_validation"},
};

}  // namespace

int lib_init() {
    return 0;
}

int lib_finish() {
    return 0;
}

int get_validation_point(char* buffer, int size) {
    static_cast<void>(
        std::snprintf(buffer, static_cast<std::size_t>(size), "%s", kValidationPoint));
    return 0;
}

int validate(confd_trans_ctx* tctx, confd_hkeypath_t* kp, confd_value_t* newval) {
    if (kp == nullptr || newval == nullptr || tctx == nullptr) {
        return CONFD_ERR;
    }
    const int maapi_socket = qelconfd_maapi_socket_get(static_cast<qelconfd_t*>(tctx->vcb_opaque));
    if (maapi_socket < 0) {
        return CONFD_ERR;
    }
    const auto* const selector = static_cast<const char*>(tctx->validate_opaque);
    if (selector == nullptr) {
        return CONFD_ERR;
    }
    for (const ValidationEntry& row : kValidationTable) {
        if (std::strncmp(selector, row.name, std::strlen(row.name)) == 0) {
            return row.handler(maapi_socket, tctx, kp, newval);
        }
    }
    return CONFD_ERR;
}

std::list<std::string> get_key_list(int maapi_socket, confd_trans_ctx* tctx,
                                    const std::string& path) {
    return list_keys<kKeyBufferSize>(maapi_socket, tctx, path);
}
