#include "commands/exit_code.h"

int exit_code(const Summary& summary, bool accept_warnings) {
    if (summary.not_checked > 0) {
        return kExitCannotCheck;
    }
    if (summary.errors > 0) {
        return kExitErrors;
    }
    return summary.warnings == 0 || accept_warnings ? kExitClean : kExitWarnings;
}
