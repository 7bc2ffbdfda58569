#include "entry_call.h"

#include <unistd.h>

#include <cstdio>
#include <cstdlib>

namespace local_platform {
namespace {

thread_local const ExitWatch* current_watch = nullptr;

/// A file's name as a terminal may show it.
std::string printable(std::string text) {
    for (char& c : text) {
        c = c < ' ' || c > '~' ? '?' : c;
    }
    return text;
}

/// Runs at exit, on the thread that called it: does nothing when the program itself ends.
void refuse_exit() {
    if (current_watch != nullptr) {
        static_cast<void>(std::fflush(nullptr));
        static_cast<void>(std::fprintf(stderr, "%s: the plug-in ended the program in %s\n",
                                       printable(current_watch->file()).c_str(),
                                       current_watch->entry()));
        _exit(kEndedByPlugin);
    }
}

bool watch_exits() {
    return std::atexit(refuse_exit) == 0 && std::at_quick_exit(refuse_exit) == 0;
}

}  // namespace

ExitWatch::ExitWatch(const std::string& file, const char* entry)
    : file_(file), entry_(entry), outer_(current_watch) {
    static const bool watching = watch_exits();
    static_cast<void>(watching);
    current_watch = this;
}

ExitWatch::~ExitWatch() {
    current_watch = outer_;
}

}  // namespace local_platform
