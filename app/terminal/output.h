/// What the command writes.
#pragma once

#include <string>
#include <string_view>

/// Writes `text` to standard output. Throws InputError when it cannot take it, so that a full disk
/// never reads as a clean check.
void print(const std::string& text);

/// Calls standard output `name` in messages, for it is that file.
void name_output(const std::string& name);

/// Whether `fd` is a terminal that understands more than text.
bool is_terminal(int fd);

/// Wants colour "always", "never", or "auto"matically, when standard output is such a terminal. The
/// environment can say the same: CLICOLOR_FORCE before NO_COLOR.
void choose_colour(const std::string& when);

bool wants_colour();

/// `text` for a reader, valid UTF-8 whatever its bytes: what is no UTF-8 and every character that
/// is obeyed instead of shown (controls, line ends, changes of the direction of writing) is written
/// as "\x0a" or "\u202e", so that text from outside can neither forge a line nor command a
/// terminal.
std::string printable(std::string_view text);

/// `reason` as the one line in which the command says on standard error why it failed.
std::string complaint(std::string_view reason);
