// Sends the requests of the rules' cases to the plug-in that was built against the SDK, loaded as a
// router's host does.
#include <dlfcn.h>

#include <cstdio>
#include <cstdlib>

#include "vrrp_valid.h"

int validate(confd_trans_ctx* tctx, confd_hkeypath_t* kp, confd_value_t* newval) {
    static void* const plugin = dlopen(std::getenv("PLUGIN"), RTLD_NOW | RTLD_LOCAL);
    if (plugin == nullptr) {
        static_cast<void>(std::fprintf(stderr, "%s\n", dlerror()));
        std::abort();
    }
    return reinterpret_cast<decltype(&validate)>(dlsym(plugin, "validate"))(tctx, kp, newval);
}
