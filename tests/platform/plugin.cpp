// A plug-in whose rules answer what their selector says, and that goes wrong where and how
// PLUGIN_GOES_WRONG says: "validate throws".
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <exception>
#include <string>

#include "confd_maapi.h"
#include "qelconfd.h"

namespace {

/// Its text lives in the plug-in, as its type does.
struct OwnError : std::exception {
    const char* what() const noexcept override { return "the plug-in's own words"; }
};

/// What `entry` returns, if it returns.
int result_of(const std::string& entry) {
    const char* const wrong = std::getenv("PLUGIN_GOES_WRONG");
    const std::string way = wrong == nullptr ? "" : wrong;
    if (way == entry + " throws") {
        throw OwnError();
    }
    if (way == entry + " throws a number") {
        throw 7;
    }
    if (way == entry + " exits") {
        std::exit(0);
    }
    if (way == entry + " exits quickly") {
        std::quick_exit(0);
    }
    return way == entry + " fails" ? 5 : 0;
}

const int loaded = result_of("its initialisation");

}  // namespace

extern "C" {

int lib_init() {
    return loaded + result_of("lib_init");
}
int lib_finish() {
    static_cast<void>(std::fputs("[finished]", stderr));
    return result_of("lib_finish");
}
int get_validation_point(char* buffer, int size) {
    std::memset(buffer, 'p', static_cast<std::size_t>(size));  // and no NUL
    if (std::getenv("PLUGIN_GOES_WRONG") == nullptr) {
        std::memcpy(buffer, "answers", sizeof "answers");
    }
    return result_of("get_validation_point");
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
    if (selector == "silent") {
        maapi_exists(qelconfd_maapi_socket_get(static_cast<qelconfd_t*>(tctx->vcb_opaque)),
                     tctx->thandle, "/top");
        return CONFD_ERR;
    }
    if (selector == "throwing") {
        throw OwnError();
    }
    return selector == "odd" ? 7 : result_of("validate");
}
}
