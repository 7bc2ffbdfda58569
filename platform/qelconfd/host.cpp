#include "host.h"

#include <dlfcn.h>

#include <array>

namespace local_platform {
namespace {

/// More than any name that ConfD takes for a validation point.
constexpr int kPointNameSize = 256;

struct LibraryDeleter {
    void operator()(void* library) const { dlclose(library); }
};
using Library = std::unique_ptr<void, LibraryDeleter>;

Library load(const std::string& file) {
    // A bare name would be searched for in the system's folders.
    const std::string path = file.find('/') == std::string::npos ? "./" + file : file;
    Library library(dlopen(path.c_str(), RTLD_NOW | RTLD_LOCAL));
    if (library == nullptr) {
        throw PlatformError(file + ": cannot load the plug-in: " + dlerror());
    }
    return library;
}

template <typename Function>
Function* entry(const Library& library, const std::string& file, const char* name) {
    void* const symbol = dlsym(library.get(), name);
    if (symbol == nullptr) {
        throw PlatformError(file + ": not a validation plug-in: it has no entry \"" + name + "\"");
    }
    return reinterpret_cast<Function*>(symbol);
}

}  // namespace

struct Host::Plugin {
    Library library;
    int (*lib_finish)();
    int (*validate)(confd_trans_ctx*, confd_hkeypath_t*, confd_value_t*);
    std::string validation_point;
};

Host::Host(const std::string& plugin_file) {
    Library library = load(plugin_file);
    auto* const lib_init = entry<int()>(library, plugin_file, "lib_init");
    auto* const get_validation_point =
        entry<int(char*, int)>(library, plugin_file, "get_validation_point");
    auto* const validate = entry<int(confd_trans_ctx*, confd_hkeypath_t*, confd_value_t*)>(
        library, plugin_file, "validate");
    auto* const lib_finish = entry<int()>(library, plugin_file, "lib_finish");

    if (lib_init() != 0) {
        throw PlatformError(plugin_file + ": lib_init failed");
    }
    std::array<char, kPointNameSize> name{};
    if (get_validation_point(name.data(), kPointNameSize) != 0) {
        lib_finish();
        throw PlatformError(plugin_file + ": get_validation_point failed");
    }
    plugin_ =
        std::make_unique<Plugin>(Plugin{std::move(library), lib_finish, validate, name.data()});
}

Host::~Host() {
    plugin_->lib_finish();
}

const std::string& Host::validation_point() const {
    return plugin_->validation_point;
}

Verdict Host::validate(const Instance& instance, const std::string& selector, confd_hkeypath_t& kp,
                       confd_value_t& newval) const {
    Verdict verdict;
    confd_trans_ctx tctx{};
    tctx.thandle = instance.thandle();
    tctx.vcb_opaque = instance.handle();
    tctx.validate_opaque = const_cast<char*>(selector.c_str());
    tctx.messages = &verdict.messages;
    verdict.result = plugin_->validate(&tctx, &kp, &newval);
    return verdict;
}

}  // namespace local_platform
