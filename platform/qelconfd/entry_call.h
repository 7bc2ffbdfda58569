/// A call into a plug-in, whatever it may do.
#pragma once

#include <functional>
#include <string>

namespace local_platform {

/// What `call`, which calls `entry`, returns. Throws PlatformError that names `file` and `entry`
/// for whatever leaves it. An exit() in it ends the process with code 2 and a message on standard
/// error that names them too; _exit() and abort() cannot be told from a crash and stay what they
/// are.
int call_entry(const std::string& file, const char* entry, const std::function<int()>& call);

}  // namespace local_platform
