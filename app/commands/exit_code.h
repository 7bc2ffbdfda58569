/// What the exit code says.
#pragma once

#include <cstdint>

#include "reports/summary.h"

constexpr int kExitClean = 0;        ///< nothing was found, or no more warnings than are accepted
constexpr int kExitErrors = 1;       ///< at least one error
constexpr int kExitDifferences = 1;  ///< of a comparison
constexpr int kExitCannotCheck = 2;  ///< also when the command line is wrong
constexpr int kExitWarnings = 3;     ///< more warnings than are accepted, and no errors
constexpr int kInterrupted = -1;  ///< none: the process is to end by the signal that ended the run

/// More than any run has: all are accepted.
constexpr std::size_t kAllWarnings = INT64_MAX;

/// The exit code of the worst report: not checked before errors, errors before warnings.
inline int exit_code(const Summary& summary, std::size_t accepted_warnings) {
    const bool is_accepted = summary.warnings <= accepted_warnings;
    return summary.not_checked > 0 ? kExitCannotCheck
           : summary.errors > 0    ? kExitErrors
           : is_accepted           ? kExitClean
                                   : kExitWarnings;
}
