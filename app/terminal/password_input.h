/// A password from the operator.
#pragma once

#include <string>

/// Reads a password: from a terminal without echo, asked for twice, or else the first line of
/// standard input. Throws CannotCheck when there is none, or the two differ. The caller wipes it.
std::string read_password();
