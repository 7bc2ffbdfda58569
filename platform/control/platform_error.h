/// The one exception of the local platform.
#pragma once

#include <stdexcept>

namespace local_platform {

/// A failure that the operator reads: it names the file, node or entry, and what is wrong with it.
struct PlatformError : std::runtime_error {
    using std::runtime_error::runtime_error;
};

}  // namespace local_platform
