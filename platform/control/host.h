/// The host's half of the local libqelconfd: it loads a plug-in and hands it validation requests.
#pragma once

#include <memory>
#include <string>
#include <vector>

#include "instance.h"
#include "platform_error.h"

#pragma GCC visibility push(default)

namespace local_platform {

/// A plug-in's answer to one request.
struct Verdict {
    int result = CONFD_OK;
    std::vector<std::string> messages;  ///< every one it set, in order
};

/// A loaded plug-in with its validation point registered.
class Host {
  public:
    /// Loads the library, runs its `lib_init` and registers the point that it names. Throws
    /// PlatformError that names the file and the entry it lacks, or what the loader says.
    explicit Host(const std::string& plugin_file);
    /// Runs `lib_finish` and unloads the library.
    ~Host();
    Host(const Host&) = delete;
    Host& operator=(const Host&) = delete;

    const std::string& validation_point() const;

    /// Hands the plug-in one request of its point. An exception that leaves the plug-in passes.
    Verdict validate(const Instance& instance, const std::string& selector, confd_hkeypath_t& kp,
                     confd_value_t& newval) const;

  private:
    struct Plugin;
    std::unique_ptr<Plugin> plugin_;
};

}  // namespace local_platform

#pragma GCC visibility pop
