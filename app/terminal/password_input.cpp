#include "terminal/password_input.h"

#include <bsd/readpassphrase.h>
#include <poll.h>
#include <unistd.h>

#include <cerrno>

#include "errors/input_error.h"
#include "files/file_descriptor.h"
#include "files/secret.h"

namespace {

/// As the rule for simple-text passwords has it; see its text in the model.
constexpr std::size_t kLongestPassword = 8;
/// Of what is read: enough to tell that it is too long.
constexpr std::size_t kLongestLine = 64;

[[noreturn]] void fail(const char* where) {
    throw InputError(std::string(where) + " cannot be read: " + last_system_error());
}

/// Asks on the terminal, which does not show the answer and echoes again whatever signal comes.
void ask(const char* question, Secret& answer) {
    answer.text.resize(kLongestLine);
    while (readpassphrase(question, answer.text.data(), kLongestLine, RPP_REQUIRE_TTY) == nullptr) {
        if (errno != EINTR) {  // by a signal that is ignored
            fail("the terminal");
        }
    }
    answer.text.resize(answer.text.find_last_not_of('\0') + 1);
}

/// Reads the first line of standard input, without its end, byte by byte: what follows is not ours.
void read_line(Secret& line) {
    line.text.reserve(kLongestLine);
    pollfd input{STDIN_FILENO, POLLIN, 0};  // which may have been made not to wait
    char byte = 0;
    while (line.text.size() < kLongestLine) {
        uninterrupted([&] { return poll(&input, 1, -1); });
        const ssize_t count = uninterrupted([&] { return read(STDIN_FILENO, &byte, 1); });
        if (count < 0) {
            fail("standard input");
        }
        if (count == 0 || byte == '\n') {
            break;
        }
        line.text += byte;
    }
    if (!line.text.empty() && line.text.back() == '\r') {
        line.text.pop_back();
    }
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
