/// What the command writes.
#pragma once

#include <string>
#include <string_view>
#include <system_error>

/// Why standard output cannot take what is to be written.
struct OutputError : std::system_error {
    using std::system_error::system_error;
};

/// Writes `text` to standard output. Throws OutputError when it cannot take it, so that a full disk
/// never reads as a clean check.
void print(const std::string& text);

/// Whether `fd` is a terminal that understands more than text.
bool is_terminal(int fd);

/// Whether to colour what goes to standard output: `when` is "always", "never", or "auto", which
/// leaves it to NO_COLOR in the environment, and then to the terminal.
bool wants_colour(const std::string& when);

/// `reason` as the one line in which the command says on standard error why it failed.
std::string complaint(std::string_view reason);
