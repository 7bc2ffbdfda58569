#include "terminal/interrupt.h"

#include <array>
#include <csignal>
#include <cstdlib>

#include "files/named_file.h"

namespace {

constexpr std::array<int, 3> kSignals = {SIGHUP, SIGINT, SIGTERM};

volatile std::sig_atomic_t noted_signal = 0;

void note(int signal) {
    if (is_waiting_over()) {
        static_cast<void>(std::signal(signal, SIG_DFL));
        static_cast<void>(raise(signal));
    }
    noted_signal = signal;
    is_waiting_over() = true;
}

}  // namespace

Interrupt::Interrupt() {
    struct sigaction action {};
    action.sa_handler = note;
    action.sa_flags = static_cast<int>(SA_RESTART);
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
    return is_waiting_over();
}

void Interrupt::pass_on() {
    struct sigaction action {};
    action.sa_handler = SIG_DFL;
    sigaction(noted_signal, &action, nullptr);
    static_cast<void>(raise(noted_signal));
    std::abort();  // where the signal is blocked
}
