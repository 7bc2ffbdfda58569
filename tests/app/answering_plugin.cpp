// A plug-in that answers what its selector says.
#include <cstdio>
#include <stdexcept>
#include <string>

#include "confd_maapi.h"
#include "qelconfd.h"

extern "C" {

int lib_init() {
    return 0;
}
int lib_finish() {
    return 0;
}

int get_validation_point(char* buffer, int size) {
    return std::snprintf(buffer, static_cast<std::size_t>(size), "answers") < 0 ? -1 : 0;
}

int validate(confd_trans_ctx* tctx, confd_hkeypath_t* kp, confd_value_t* newval) {
    const std::string selector = static_cast<const char*>(tctx->validate_opaque);
    if (selector == "warning") {
        confd_trans_seterr(tctx, "first, replaced by the next");
        confd_trans_seterr(tctx, "a value of type %d", newval->type);
        return CONFD_VALIDATION_WARN;
    }
    if (selector == "reading") {
        char path[256];
        confd_pp_kpath(path, sizeof path, kp);
        int32_t size = 0;
        const int socket = qelconfd_maapi_socket_get(static_cast<qelconfd_t*>(tctx->vcb_opaque));
        maapi_get_int32_elem(socket, tctx->thandle, &size, "%s", path);
        maapi_exists(socket, tctx->thandle, "%s", path);
        confd_trans_seterr(tctx, "%d is too much", size);
        return size > 9 ? CONFD_ERR : CONFD_OK;
    }
    if (selector == "throwing") {
        throw std::runtime_error("broken");
    }
    return selector == "silent" ? CONFD_ERR : selector == "odd" ? 7 : CONFD_OK;
}
}
