/// Why the command could not check a configuration.
#pragma once

#include <stdexcept>

#include "errors/location.h"

/// Its text is what the operator reads: the file, the line and column where there are any, what is
/// wrong, and what to do.
struct InputError : std::runtime_error {
    using std::runtime_error::runtime_error;
    InputError(Location where, const std::string& what_is_wrong)
        : std::runtime_error(text_of(where) + ": " + what_is_wrong), at(std::move(where)) {}

    Location at;  ///< unknown when the reason is not in a file
};
