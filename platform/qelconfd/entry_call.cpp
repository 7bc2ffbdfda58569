#include "entry_call.h"

#include <unistd.h>

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <exception>

#include "platform_error.h"

namespace local_platform {
namespace {

/// The code that the process ends with when a plug-in ends it.
constexpr int kEndedByPlugin = 2;

/// The call that this thread is in; null when it is in none.
thread_local const std::string* current_file = nullptr;
thread_local const char* current_entry = nullptr;

/// Runs at exit, on the thread that called it: does nothing when the program itself ends.
void refuse_exit() {
    if (current_file != nullptr) {
        // A file's name as a terminal may show it.
        std::string shown = *current_file;
        std::replace_if(
            shown.begin(), shown.end(), [](char c) { return c < ' ' || c > '~'; }, '?');
        static_cast<void>(std::fflush(nullptr));
        static_cast<void>(std::fprintf(stderr, "%s: the plug-in ended the program in %s\n",
                                       shown.c_str(), current_entry));
        _exit(kEndedByPlugin);
    }
}

/// Ends the thread's call when it goes.
struct CallEnd {
    ~CallEnd() { current_file = nullptr; }
};

}  // namespace

int call_entry(const std::string& file, const char* entry, const std::function<int()>& call) {
    static const bool watching =
        std::atexit(refuse_exit) == 0 && std::at_quick_exit(refuse_exit) == 0;
    static_cast<void>(watching);
    const CallEnd end;
    current_file = &file;
    current_entry = entry;
    // An exception's text is copied and the exception gone before the caller can unload the library
    // that its type lives in.
    try {
        return call();
    } catch (const std::exception& error) {
        throw PlatformError(file + ": " + entry + " threw an exception: " + error.what());
    } catch (...) {
        throw PlatformError(file + ": " + entry + " threw an exception that says nothing");
    }
}

}  // namespace local_platform
