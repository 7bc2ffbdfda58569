/// The host's half of the local libqelconfd: it loads a plug-in and hands it validation requests.
#pragma once

#include <memory>
#include <string>
#include <vector>

#include "instance.h"
#include "platform_error.h"

namespace local_platform {

/// A plug-in's answer to one request.
struct Response {
    int result = CONFD_OK;
    std::vector<std::string> messages;  ///< every one it set, in order
};

/// A loaded plug-in with its validation point registered. Whatever a plug-in does wrong ends in a
/// PlatformError that names the file and the entry: an entry that is missing, fails or throws
/// anything. When it calls exit(), the process ends with code 2 and such a message on standard
/// error.
class Host {
  public:
    /// Loads the library, runs its `lib_init` and registers the point that it names. Throws
    /// PlatformError, after `lib_finish` where `lib_init` succeeded.
    explicit Host(const std::string& plugin_file);
    /// Unloads the library, if unload() has not; what `lib_finish` does wrong is lost.
    ~Host();
    Host(const Host&) = delete;
    Host& operator=(const Host&) = delete;

    /// Runs `lib_finish` and unloads the library, after which the host is of no further use. Throws
    /// PlatformError.
    void unload();

    const std::string& validation_point() const;

    /// Hands the plug-in one request of its point, on any thread. Throws PlatformError.
    Response validate(const Instance& instance, const std::string& selector, confd_hkeypath_t& kp,
                      confd_value_t& newval) const;

  private:
    struct Plugin;
    explicit Host(std::unique_ptr<Plugin> initialised);

    std::unique_ptr<Plugin> plugin_;
};

}  // namespace local_platform
