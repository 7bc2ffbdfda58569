/// What the exit code says.
#pragma once

#include "reports/summary.h"

constexpr int kExitClean = 0;
constexpr int kExitErrors = 1;
constexpr int kExitCannotCheck = 2;
constexpr int kExitWarnings = 3;
constexpr int kExitUnconfirmed = 3;  ///< of a commit
constexpr int kExitDifferences = 1;  ///< of a comparison
constexpr int kInterrupted = -1;  ///< none: the process is to end by the signal that ended the run

/// The exit code of the worst report: not checked before errors, errors before warnings.
int exit_code(const Summary& summary, bool accept_warnings);
