#include "files/interrupt.h"

#include <csignal>
#include <cstdlib>

namespace {

constexpr int kSignals[] = {SIGHUP, SIGINT, SIGTERM};

std::atomic<bool> is_noted{false};
static_assert(std::atomic<bool>::is_always_lock_free, "a signal handler sets it");

/// While it runs, `signal` has its default effect again.
void note(int signal) {
    if (is_noted.exchange(true)) {
        static_cast<void>(raise(signal));
    }
}

struct sigaction action_of(int signal) {
    struct sigaction action {};
    sigaction(signal, nullptr, &action);
    return action;
}

}  // namespace

const std::atomic<bool>& is_interrupted() {
    return is_noted;
}

void note_interrupts() {
    struct sigaction action {};
    action.sa_handler = note;
    action.sa_flags = static_cast<int>(SA_RESTART | SA_RESETHAND);
    for (const int signal : kSignals) {
        if (action_of(signal).sa_handler != SIG_IGN) {
            sigaction(signal, &action, nullptr);
        }
    }
}

void end_as_interrupted() {
    for (const int signal : kSignals) {
        if (action_of(signal).sa_handler == SIG_DFL) {
            static_cast<void>(raise(signal));
        }
    }
    std::abort();  // where the signal is blocked
}
