/// Standard output.
#pragma once

#include <string>

/// Writes `text` to standard output. Throws CannotJudge when it cannot take it, so that a full disk
/// never reads as a clean check.
void print(const std::string& text);

/// Whether standard output is a terminal on which colour is wanted.
bool wants_colour();
