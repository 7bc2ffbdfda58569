/// Text from outside, made fit to be shown.
#pragma once

#include <string>
#include <string_view>

/// `text` for a reader, valid UTF-8 whatever its bytes: what is no UTF-8 and every character that
/// is obeyed instead of shown (controls, line ends, changes of the direction of writing) is written
/// as "\x0a" or "\u202e", so that text from outside can neither forge a line nor command a
/// terminal.
std::string printable(std::string_view text);

/// The first character of `text` that no string of YANG has (RFC 7950, section 14), as printable()
/// shows it; empty without one.
std::string excluded_character(std::string_view text);
