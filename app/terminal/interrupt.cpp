#include "terminal/interrupt.h"

#include <array>
#include <csignal>
#include <cstdlib>

namespace {

constexpr std::array<int, 3> kSignals = {SIGHUP, SIGINT, SIGTERM};

std::atomic<bool> is_noted_now{false};
volatile std::sig_atomic_t noted_signal = 0;

static_assert(std::atomic<bool>::is_always_lock_free, "a signal handler sets it");

void note(int signal) {
    noted_signal = signal;
    is_noted_now = true;
}

}  // namespace

Interrupt::Interrupt() {
    struct sigaction action {};
    action.sa_handler = note;
    action.sa_flags = static_cast<int>(SA_RESETHAND);
    for (const int signal : kSignals) {
        struct sigaction before {};
        sigaction(signal, nullptr, &before);
        if (before.sa_handler != SIG_IGN) {
            sigaction(signal, &action, nullptr);
        }
    }
}

Interrupt::~Interrupt() {
    for (const int signal : kSignals) {
        struct sigaction action {};
        sigaction(signal, nullptr, &action);
        if (action.sa_handler == note) {
            action.sa_handler = SIG_DFL;
            sigaction(signal, &action, nullptr);
        }
    }
}

const std::atomic<bool>& Interrupt::is_noted() const {
    return is_noted_now;
}

void Interrupt::pass_on() {
    if (!is_noted_now) {
        return;
    }
    struct sigaction action {};
    action.sa_handler = SIG_DFL;
    sigaction(noted_signal, &action, nullptr);
    static_cast<void>(raise(noted_signal));
    std::abort();  // where the signal is blocked
}
