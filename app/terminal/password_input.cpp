#include "terminal/password_input.h"

#include <bsd/readpassphrase.h>
#include <fcntl.h>
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

/// Asks on the terminal, which does not show the answer and echoes again whatever signal comes, or
/// reads the first line of standard input and not a byte more: what follows is not ours.
void read_answer(const char* question, bool from_terminal, Secret& answer) {
    // No part of an answer, whose end is before the first of them.
    answer.text.assign(kLongestLine + 1, '\n');
    const int source = from_terminal ? RPP_REQUIRE_TTY : RPP_STDIN;
    while (readpassphrase(question, answer.text.data(), kLongestLine, source) == nullptr) {
        if (errno != EINTR) {  // by a signal that is ignored
            throw InputError(std::string(from_terminal ? "the terminal" : "standard input") +
                             " cannot be read: " + last_system_error());
        }
    }
    answer.text.resize(answer.text.find('\n') - 1);
    const std::string& text = answer.text;
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
        fcntl(STDIN_FILENO, F_SETFL, O_RDONLY);  // to wait, whatever it was made to do
        return read_answer("", false, password);
    }
    read_answer("Password: ", true, password);
    Secret again;
    read_answer("Again: ", true, again);
    if (again.text != password.text) {
        throw InputError("the two passwords differ; run the command again");
    }
}
