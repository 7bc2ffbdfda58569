#include "handlers.h"

#include "typed_value.h"

int32_t validate_vrrp_secondary_ipv4_addr(int32_t maapi_socket, confd_trans_ctx* tctx,
                                          confd_hkeypath_t* kp, confd_value_t* /*newval*/) {
    if (ENUM_VALUE(&kp->v[2][0]) == kAddressFamilyIpv6) {
        return CONFD_OK;
    }
    const std::string name = l3_interface_name(BUF_TEXT(&kp->v[4][0]));
    const std::string path = l3_interface_path(name, "}/ipv4/address/secondary");
    if (maapi_num_instances(maapi_socket, tctx->thandle, "%s", path.c_str()) <= 0) {
        return CONFD_OK;
    }
    set_error(tctx, concat({"secondary IPv4 address must not be configured on interface l3 ", name,
                            " with VRRP enabled."}));
    return CONFD_ERR;
}
