#include "terminal/password_input.h"

#include <poll.h>
#include <sys/types.h>
#include <termios.h>
#include <unistd.h>

#include <array>
#include <cerrno>
#include <csignal>
#include <optional>
#include <string_view>

#include "errors/input_error.h"
#include "files/file_descriptor.h"
#include "files/secret.h"

namespace {

/// As the rule for simple-text passwords has it; see its text in the model.
constexpr std::size_t kLongestPassword = 8;
constexpr std::size_t kLongestLine = 4096;

constexpr std::array<int, 5> kDepartures = {SIGHUP, SIGINT, SIGQUIT, SIGTERM, SIGTSTP};

// What the signal handlers need.
termios with_echo{};
std::string_view asked;

void set_echo(bool is_on) {
    termios settings = with_echo;
    if (!is_on) {
        settings.c_lflag &= ~static_cast<tcflag_t>(ECHO);
    }
    tcsetattr(STDIN_FILENO, TCSAFLUSH, &settings);
}

sigset_t only(int signal) {
    sigset_t signals;
    sigemptyset(&signals);
    sigaddset(&signals, signal);
    return signals;
}

struct sigaction handling(int signal, void (*handler)(int)) {
    struct sigaction action {};
    action.sa_handler = handler;
    action.sa_flags = signal == SIGCONT ? 0 : static_cast<int>(SA_RESETHAND);
    sigfillset(&action.sa_mask);
    return action;
}

/// Gives the echo back before `signal` ends or stops the process.
void depart(int signal) {
    const int error = errno;
    set_echo(true);
    const sigset_t departure = only(signal);
    static_cast<void>(raise(signal));
    sigprocmask(SIG_UNBLOCK, &departure, nullptr);
    // It was a stop, and is over; or nobody was there to continue the process, and there was none.
    sigprocmask(SIG_BLOCK, &departure, nullptr);
    const struct sigaction action = handling(signal, depart);
    sigaction(signal, &action, nullptr);
    set_echo(false);
    errno = error;
}

/// Takes the echo away again, and asks again: a shell has been at the terminal.
void come_back(int /*signal*/) {
    const int error = errno;
    set_echo(false);
    // A question that cannot be shown again is no reason to end: the answer is still read.
    [[maybe_unused]] const ssize_t shown = write(STDERR_FILENO, asked.data(), asked.size());
    errno = error;
}

/// Takes a terminal's echo away while it lives, but for the time that a signal stops the process,
/// and gives it back when one ends it. A signal that was ignored before still is.
class NoEcho {
  public:
    explicit NoEcho(std::string_view question) {
        asked = question;
        tcgetattr(STDIN_FILENO, &with_echo);
        for (std::size_t i = 0; i < kDepartures.size(); ++i) {
            sigaction(kDepartures.at(i), nullptr, &before_.at(i));
            if (before_.at(i).sa_handler != SIG_IGN) {
                const struct sigaction action = handling(kDepartures.at(i), depart);
                sigaction(kDepartures.at(i), &action, nullptr);
            }
        }
        const struct sigaction action = handling(SIGCONT, come_back);
        sigaction(SIGCONT, &action, &continue_before_);
        set_echo(false);
    }
    NoEcho(const NoEcho&) = delete;
    NoEcho& operator=(const NoEcho&) = delete;
    ~NoEcho() {
        sigaction(SIGCONT, &continue_before_, nullptr);
        set_echo(true);
        for (std::size_t i = 0; i < kDepartures.size(); ++i) {
            sigaction(kDepartures.at(i), &before_.at(i), nullptr);
        }
    }

  private:
    std::array<struct sigaction, kDepartures.size()> before_{};
    struct sigaction continue_before_ {};
};

/// The next byte of standard input; nothing at its end.
std::optional<char> read_byte() {
    char byte = 0;
    for (;;) {
        const ssize_t count = uninterrupted([&] { return read(STDIN_FILENO, &byte, 1); });
        if (count >= 0) {
            return count == 1 ? std::optional(byte) : std::nullopt;
        }
        if (errno != EAGAIN) {
            throw InputError("standard input cannot be read: " + last_system_error());
        }
        pollfd input{STDIN_FILENO, POLLIN, 0};  // it was made not to wait
        poll(&input, 1, -1);
    }
}

/// One line of standard input into `line`, without its end, byte by byte: what follows it is not
/// ours.
void read_line(Secret& line) {
    line.text.reserve(kLongestLine);
    while (line.text.size() < kLongestLine) {
        const std::optional<char> byte = read_byte();
        if (!byte || *byte == '\n') {
            break;
        }
        line.text += *byte;
    }
    if (!line.text.empty() && line.text.back() == '\r') {
        line.text.pop_back();
    }
}

void ask(std::string_view question, Secret& answer) {
    {
        const NoEcho no_echo(question);  // before the question: an answer may follow it at once
        write_all(STDERR_FILENO, question);
        read_line(answer);
    }
    write_all(STDERR_FILENO, "\n");
}

void require_password(const std::string& text) {
    if (text.empty()) {
        throw InputError(
            "no password was given; type one, or send it as the first line of standard input");
    }
    if (text.size() > kLongestPassword) {
        throw InputError("the password is too long: it may have " +
                         std::to_string(kLongestPassword) +
                         " bytes, and a character outside ASCII takes more than one of them");
    }
    if (text.find('\0') != std::string::npos) {
        throw InputError("the password contains a NUL byte; remove it");
    }
}

}  // namespace

void read_password(Secret& password) {
    if (isatty(STDIN_FILENO) != 1) {
        read_line(password);
        return require_password(password.text);
    }
    ask("Password: ", password);
    require_password(password.text);
    Secret again;
    ask("Again: ", again);
    if (again.text != password.text) {
        throw InputError("the two passwords differ; run the command again");
    }
}
