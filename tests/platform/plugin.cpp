// A plug-in that goes wrong where and how PLUGIN_GOES_WRONG says: "validate throws".
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <exception>
#include <string>

#include "confd_lib.h"

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
    return result_of("get_validation_point");
}
int validate(confd_trans_ctx* /*tctx*/, confd_hkeypath_t* /*kp*/, confd_value_t* /*newval*/) {
    return result_of("validate");
}
}
