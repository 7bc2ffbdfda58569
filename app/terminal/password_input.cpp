#include "terminal/password_input.h"

#include <sys/types.h>
#include <termios.h>
#include <unistd.h>

#include <csignal>

#include "errors/cannot_check.h"
#include "files/file_descriptor.h"
#include "files/secret.h"

namespace {

constexpr std::size_t kLongestLine = 4096;

termios with_echo{};

/// The signal ends the process as soon as its handler, which is there for one only, returns.
void give_echo_back(int signal) {
    tcsetattr(STDIN_FILENO, TCSAFLUSH, &with_echo);
    static_cast<void>(raise(signal));
}

/// Takes a terminal's echo away while it lives, and gives it back when a signal ends the process
/// meanwhile.
class NoEcho {
  public:
    NoEcho() {
        tcgetattr(STDIN_FILENO, &with_echo);
        struct sigaction action {};
        action.sa_handler = give_echo_back;
        action.sa_flags = static_cast<int>(SA_RESETHAND);
        sigaction(SIGINT, &action, &interrupt_before_);
        sigaction(SIGTERM, &action, &terminate_before_);
        termios silent = with_echo;
        silent.c_lflag &= ~static_cast<tcflag_t>(ECHO);
        tcsetattr(STDIN_FILENO, TCSAFLUSH, &silent);
    }
    NoEcho(const NoEcho&) = delete;
    NoEcho& operator=(const NoEcho&) = delete;
    ~NoEcho() {
        tcsetattr(STDIN_FILENO, TCSAFLUSH, &with_echo);
        sigaction(SIGINT, &interrupt_before_, nullptr);
        sigaction(SIGTERM, &terminate_before_, nullptr);
    }

  private:
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
        throw CannotCheck(
            "no password was given; type one, or send it as the first line of standard input");
    }
    if (password.size() == kLongestLine || password.find('\0') != std::string::npos) {
        explicit_bzero(password.data(), password.size());
        throw CannotCheck("the password is too long, or holds a NUL byte; give a shorter text");
    }
    if (is_terminal) {
        const Secret again(ask("Again: "));
        if (again.text != password) {
            explicit_bzero(password.data(), password.size());
            throw CannotCheck("the two passwords differ; run the command again");
        }
    }
    return password;
}
