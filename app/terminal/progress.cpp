#include "terminal/progress.h"

#include <unistd.h>

#include <iostream>

#include "terminal/output.h"
#include "text/printable.h"

namespace {

constexpr std::chrono::milliseconds kFirst(1000);
constexpr std::chrono::milliseconds kThen(100);
constexpr const char* kClearLine = "\r\033[K";

}  // namespace

Progress::Progress()
    : is_terminal_(is_terminal(STDERR_FILENO)), next_(std::chrono::steady_clock::now() + kFirst) {}

Progress::~Progress() {
    clear();
}

void Progress::clear() {
    if (is_shown_) {
        std::cerr << kClearLine << std::flush;
        is_shown_ = false;
    }
}

void Progress::show(const std::string& line) {
    if (!is_terminal_) {
        return;
    }
    const auto now = std::chrono::steady_clock::now();
    if (now < next_) {
        return;
    }
    next_ = now + kThen;
    is_shown_ = true;
    std::cerr << kClearLine << printable(line) << std::flush;
}
