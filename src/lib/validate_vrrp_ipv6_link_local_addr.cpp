#include "handlers.h"

#include "typed_value.h"

int32_t validate_vrrp_ipv6_link_local_addr(int32_t maapi_socket, confd_trans_ctx* tctx,
                                           confd_hkeypath_t* kp, confd_value_t* /*newval*/) {
    if (ENUM_VALUE(&kp->v[2][0]) == kAddressFamilyIpv4) {
        return CONFD_OK;
    }
    char keypath[kKeypathBufferSize] = {};
    confd_pp_kpath(keypath, kKeypathBufferSize, kp);
    const std::string automatic =
        concat({keypath, "/address-link-local/link-local/auto-configuration"});
    const std::string manual = concat({keypath, "/address-link-local/link-local/ip"});
    const int has_automatic = maapi_exists(maapi_socket, tctx->thandle, "%s", automatic.c_str());
    const int has_manual = maapi_exists(maapi_socket, tctx->thandle, "%s", manual.c_str());
    if (has_automatic == 1 || has_manual == 1) {
        return CONFD_OK;
    }
    set_error(
        tctx,
        "IPv6 link-local address is mandatory to enable router VRRP with address-family IPv6.");
    return CONFD_ERR;
}
