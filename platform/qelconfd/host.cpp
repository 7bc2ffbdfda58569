#include "host.h"

#include <dlfcn.h>

#include <array>

#include "entry_call.h"

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
    Library library;
    call_entry(file, "its initialisation", [&] {
        library.reset(dlopen(path.c_str(), RTLD_NOW | RTLD_LOCAL));
        return 0;
    });
    if (library == nullptr) {
        const std::string error = dlerror();
        const bool is_file = error.compare(0, path.size(), path) == 0;
        const bool lacks_platform = !is_file || error.find("undefined symbol") != std::string::npos;
        throw PlatformError(file + ": cannot load the plug-in: " + error +
                            (lacks_platform ? "; its platform differs from the local one" : ""));
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

/// The library with its entries; initialised once `lib_init` has succeeded.
struct Host::Plugin {
    explicit Plugin(const std::string& plugin_file)
        : file(plugin_file),
          library(load(file)),
          lib_init(entry<int()>(library, file, "lib_init")),
          get_validation_point(entry<int(char*, int)>(library, file, "get_validation_point")),
          validate(entry<int(confd_trans_ctx*, confd_hkeypath_t*, confd_value_t*)>(library, file,
                                                                                   "validate")),
          lib_finish(entry<int()>(library, file, "lib_finish")) {
        require_success("lib_init", lib_init);
    }

    void require_success(const char* name, const std::function<int()>& call) const {
        if (const int result = call_entry(file, name, call); result != 0) {
            throw PlatformError(file + ": " + name + " failed with " + std::to_string(result));
        }
    }

    std::string file;
    Library library;
    int (*lib_init)();
    int (*get_validation_point)(char*, int);
    int (*validate)(confd_trans_ctx*, confd_hkeypath_t*, confd_value_t*);
    int (*lib_finish)();
    std::string validation_point;
};

Host::Host(std::unique_ptr<Plugin> initialised) : plugin_(std::move(initialised)) {}

// Once the delegate has returned, the destructor finishes the plug-in, also when its point fails.
Host::Host(const std::string& plugin_file) : Host(std::make_unique<Plugin>(plugin_file)) {
    std::array<char, kPointNameSize + 1> name{};
    plugin_->require_success("get_validation_point", [&] {
        return plugin_->get_validation_point(name.data(), kPointNameSize);
    });
    plugin_->validation_point = name.data();
}

Host::~Host() {
    try {
        unload();
    } catch (const PlatformError&) {
        // A host that has to know calls unload() itself.
    }
}

void Host::unload() {
    if (const auto plugin = std::move(plugin_)) {
        plugin->require_success("lib_finish", plugin->lib_finish);
    }
}

const std::string& Host::validation_point() const {
    return plugin_->validation_point;
}

Response Host::validate(const Instance& instance, const std::string& selector, confd_hkeypath_t& kp,
                        confd_value_t& newval) const {
    Response response;
    confd_trans_ctx tctx{};
    tctx.thandle = instance.thandle();
    tctx.vcb_opaque = instance.handle();
    tctx.validate_opaque = const_cast<char*>(selector.c_str());
    tctx.messages = &response.messages;
    response.result = call_entry(plugin_->file, "validate",
                                 [&] { return plugin_->validate(&tctx, &kp, &newval); });
    return response;
}

}  // namespace local_platform
