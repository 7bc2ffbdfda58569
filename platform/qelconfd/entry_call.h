/// A call into a plug-in, whatever it may do.
#pragma once

#include <exception>
#include <string>

#include "platform_error.h"

namespace local_platform {

/// The code that the process ends with when a plug-in ends it.
constexpr int kEndedByPlugin = 2;

/// While it lives, an exit() on this thread is the plug-in's: it ends the process with
/// kEndedByPlugin and a message on standard error that names `file` and `entry`. _exit() and
/// abort() cannot be told from a crash and stay what they are.
class ExitWatch {
  public:
    ExitWatch(const std::string& file, const char* entry);
    ~ExitWatch();
    ExitWatch(const ExitWatch&) = delete;
    ExitWatch& operator=(const ExitWatch&) = delete;

    const std::string& file() const { return file_; }
    const char* entry() const { return entry_; }

  private:
    const std::string& file_;
    const char* entry_;
    const ExitWatch* outer_;
};

/// What `entry`, which `call` calls, returns. Throws PlatformError that names `file` and `entry`
/// for whatever leaves it: an exception's text is copied and the exception gone before the caller
/// can unload the library that its type lives in.
template <typename Call>
auto call_entry(const std::string& file, const char* entry, Call call) {
    const ExitWatch watch(file, entry);
    try {
        return call();
    } catch (const std::exception& error) {
        throw PlatformError(file + ": " + entry + " threw an exception: " + error.what());
    } catch (...) {
        throw PlatformError(file + ": " + entry + " threw an exception that says nothing");
    }
}

}  // namespace local_platform
