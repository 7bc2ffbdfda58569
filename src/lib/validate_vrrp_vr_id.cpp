#include "config.h"
#include "handlers.h"
#include "router_vrrp.h"
#include "validate_config.h"

#include "typed_value.h"

int32_t validate_vrrp_vr_id(int32_t maapi_socket, confd_trans_ctx* tctx, confd_hkeypath_t* kp,
                            confd_value_t* /*newval*/) {
    using namespace vrrp_app::config_valid;

    const uint8_t vr_id = UINT8_VALUE(&kp->v[1][0]);
    const bool is_ipv4 = ENUM_VALUE(&kp->v[3][0]) == kAddressFamilyIpv4;
    const RouterVrrp router_vrrp{vr_id, is_ipv4 ? kIpv4 : kIpv6, BUF_TEXT(&kp->v[5][0])};

    Config config(maapi_socket, tctx);
    config.router_vrrp_config.ReadConfig();
    ValidateConfig check;
    if (check.ValidateRouterVrrpVrId(router_vrrp, config) != 0) {
        set_error(tctx, check.error_message);
        return CONFD_ERR;
    }
    return CONFD_OK;
}
