#include "password_input.h"

#include <sys/types.h>
#include <termios.h>
#include <unistd.h>

#include <csignal>

#include "cannot_judge.h"
#include "file_descriptor.h"
#include "secret.h"

namespace {

constexpr std::size_t kLongestLine = 4096;

volatile std::sig_atomic_t interrupted_by = 0;

void note_signal(int signal) {
    interrupted_by = signal;
}

/// Takes a terminal's echo away while it lives. A signal that would end the process meanwhile is
/// noted, so that the echo comes back first.
class NoEcho {
  public:
    NoEcho() {
        tcgetattr(STDIN_FILENO, &before_);
        termios silent = before_;
        silent.c_lflag &= ~static_cast<tcflag_t>(ECHO);
        tcsetattr(STDIN_FILENO, TCSAFLUSH, &silent);
        struct sigaction action {};
        action.sa_handler = note_signal;
        sigaction(SIGINT, &action, &interrupt_before_);
        sigaction(SIGTERM, &action, &terminate_before_);
    }
    NoEcho(const NoEcho&) = delete;
    NoEcho& operator=(const NoEcho&) = delete;
    ~NoEcho() {
        tcsetattr(STDIN_FILENO, TCSAFLUSH, &before_);
        sigaction(SIGINT, &interrupt_before_, nullptr);
        sigaction(SIGTERM, &terminate_before_, nullptr);
        if (interrupted_by != 0) {
            static_cast<void>(raise(interrupted_by));
        }
    }

  private:
    termios before_{};
    struct sigaction interrupt_before_ {};
    struct sigaction terminate_before_ {};
};

/// One line of standard input without its end, byte by byte: what follows it is not ours.
std::string read_line() {
    std::string line;
    line.reserve(kLongestLine);
    char byte = 0;
    while (line.size() < kLongestLine && read(STDIN_FILENO, &byte, 1) == 1 && byte != '\n') {
        line += byte;
    }
    return line;
}

std::string ask(const std::string& question) {
    std::string answer;
    {
        const NoEcho no_echo;  // before the question: an answer may follow it at once
        write_all(STDERR_FILENO, question);
        answer = read_line();
    }
    write_all(STDERR_FILENO, "\n");
    return answer;
}

}  // namespace

std::string read_password() {
    const bool is_terminal = isatty(STDIN_FILENO) == 1;
    std::string password = is_terminal ? ask("Password: ") : read_line();
    if (password.empty()) {
        throw CannotJudge(
            "no password was given; type one, or send it as the first line of standard input");
    }
    if (password.size() == kLongestLine || password.find('\0') != std::string::npos) {
        explicit_bzero(password.data(), password.size());
        throw CannotJudge("the password is too long, or holds a NUL byte; give a shorter text");
    }
    if (is_terminal) {
        const Secret again(ask("Again: "));
        if (again.text != password) {
            explicit_bzero(password.data(), password.size());
            throw CannotJudge("the two passwords differ; run the command again");
        }
    }
    return password;
}
