/// What the command writes.
#pragma once

#include <string>
#include <string_view>

/// Writes `text` to standard output. Throws CannotCheck when it cannot take it, so that a full disk
/// never reads as a clean check.
void print(const std::string& text);

/// Whether standard output is a terminal on which colour is wanted.
bool wants_colour();

/// `text` for a reader: control characters and bytes that are no UTF-8 are written as "\x0a", so
/// that what stands in a file can neither forge a line nor command the terminal.
std::string printable(std::string_view text);

/// `reason` as the one line in which the command says on standard error why it failed.
std::string complaint(std::string_view reason);
