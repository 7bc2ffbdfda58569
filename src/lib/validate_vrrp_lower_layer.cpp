#include "handlers.h"

#include "typed_value.h"

namespace {

constexpr const char* kLowerLayer = "}/lower-layer-if/vlan";
constexpr const char* kCouldNotValidate = "Could not validate lower-layer of interface l3 ";

}  // namespace

int32_t validate_vrrp_lower_layer(int32_t maapi_socket, confd_trans_ctx* tctx, confd_hkeypath_t* kp,
                                  confd_value_t* /*newval*/) {
    const std::string name = l3_interface_name(BUF_TEXT(&kp->v[4][0]));
    const std::string path = l3_interface_path(name, kLowerLayer);
    if (maapi_exists(maapi_socket, tctx->thandle, "%s", path.c_str()) == 1) {
        return CONFD_OK;
    }
    set_error(tctx, concat({"lower-layer must be configured on interface l3 ", name, "."}));
    return CONFD_ERR;
}

int32_t validate_vrrp_lower_layer_update(int32_t maapi_socket, confd_trans_ctx* tctx,
                                         confd_hkeypath_t* kp, confd_value_t* /*newval*/) {
    const std::string name = l3_interface_name(BUF_TEXT(&kp->v[4][0]));
    const std::string path = l3_interface_path(name, kLowerLayer);
    QelConfdCdbSession session(host_interface(tctx), CDB_RUNNING, true);
    if (cdb_exists(session.Socket(), "%s", path.c_str()) != 1) {
        return CONFD_OK;
    }
    int32_t candidate = 0;
    if (maapi_get_int32_elem(maapi_socket, tctx->thandle, &candidate, "%s", path.c_str()) !=
        CONFD_OK) {
        set_error(tctx, concat({kCouldNotValidate, name, "."}));
        return CONFD_ERR;
    }
    int32_t running = 0;
    if (cdb_get_int32(session.Socket(), &running, "%s", path.c_str()) != CONFD_OK) {
        set_error(tctx, concat({kCouldNotValidate, name, "."}));
        return CONFD_ERR;
    }
    if (candidate != running) {
        set_error(tctx, concat({"lower-layer cannot be changed on interface l3 ", name, "."}));
        return CONFD_ERR;
    }
    return CONFD_OK;
}
