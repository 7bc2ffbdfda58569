#include "commands/exit_code.h"

namespace {

int severity_rank(int code) {
    switch (code) {
        case kExitCannotCheck:
            return 3;
        case kExitErrors:
            return 2;
        case kExitWarnings:
            return 1;
        default:
            return 0;
    }
}

int exit_code(const Report& report, bool accept_warnings) {
    if (!report.failure.empty()) {
        return kExitCannotCheck;
    }
    if (report.count(Severity::error) > 0) {
        return kExitErrors;
    }
    return report.count(Severity::warning) == 0 || accept_warnings ? kExitClean : kExitWarnings;
}

}  // namespace

int exit_code(const std::vector<Report>& reports, bool accept_warnings) {
    int worst = kExitClean;
    for (const Report& report : reports) {
        const int code = exit_code(report, accept_warnings);
        worst = severity_rank(code) > severity_rank(worst) ? code : worst;
    }
    return worst;
}
