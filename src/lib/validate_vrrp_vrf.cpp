#include "handlers.h"

#include "typed_value.h"

int32_t validate_vrrp_vrf(int32_t maapi_socket, confd_trans_ctx* tctx, confd_hkeypath_t* kp,
                          confd_value_t* /*newval*/) {
    const std::string name = l3_interface_name(BUF_TEXT(&kp->v[4][0]));
    const std::string path = l3_interface_path(name, "}/vrf");
    if (maapi_exists(maapi_socket, tctx->thandle, "%s", path.c_str()) != 1) {
        return CONFD_OK;
    }
    set_error(tctx,
              concat({"VRF must not be configured on interface l3 ", name, " with VRRP enabled."}));
    return CONFD_ERR;
}
