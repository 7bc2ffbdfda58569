/// Why the command could not give a verdict.
#pragma once

#include <stdexcept>

/// Its text is what the operator reads: the file, the line where there is one, and what to do.
struct CannotCheck : std::runtime_error {
    using std::runtime_error::runtime_error;
};
