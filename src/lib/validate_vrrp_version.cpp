#include "handlers.h"

int32_t validate_vrrp_version(int32_t /*maapi_socket*/, confd_trans_ctx* tctx, confd_hkeypath_t* kp,
                              confd_value_t* /*newval*/) {
    QelConfdCdbSession session(host_interface(tctx), CDB_RUNNING, true);
    char keypath[kKeypathBufferSize] = {};
    confd_pp_kpath(keypath, kKeypathBufferSize, kp);
    if (cdb_exists(session.Socket(), "%s", keypath) != 1) {
        return CONFD_OK;
    }
    set_error(tctx, "changing the VRRP router version will restart the VRRP router process.");
    return CONFD_VALIDATION_WARN;
}
