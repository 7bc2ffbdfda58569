#include "commands/exit_code.h"

int exit_code(const Summary& summary, std::size_t accepted_warnings) {
    if (summary.not_checked > 0) {
        return kExitCannotCheck;
    }
    if (summary.errors > 0) {
        return kExitErrors;
    }
    return summary.warnings <= accepted_warnings ? kExitClean : kExitWarnings;
}
