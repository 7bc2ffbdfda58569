#include "commands/exit_code.h"

int exit_code(const Totals& totals, bool accept_warnings) {
    if (totals.unchecked > 0) {
        return kExitCannotCheck;
    }
    if (totals.errors > 0) {
        return kExitErrors;
    }
    return totals.warnings == 0 || accept_warnings ? kExitClean : kExitWarnings;
}

int exit_code(const std::vector<Report>& reports, bool accept_warnings) {
    return exit_code(total_of(reports), accept_warnings);
}
