#include <algorithm>
#include <iostream>

#include "commands/commands.h"
#include "commands/exit_code.h"
#include "errors/cannot_check.h"
#include "reports/report_format.h"
#include "terminal/output.h"

namespace {

/// One of several candidates: what is wrong with its file must not keep the others from being
/// checked.
Report check_one(const Checker& checker, const std::string& candidate, const Running& running) {
    try {
        return checker.check(read_configuration_file(candidate), running);
    } catch (const CannotCheck& error) {
        std::cerr << complaint(error.what());
        Report report;
        report.candidate = candidate;
        report.failure = error.what();
        return report;
    }
}

}  // namespace

void require_one_standard_input(const CheckOptions& options) {
    const auto count = std::count(options.candidates.begin(), options.candidates.end(), "-") +
                       (options.running == "-" ? 1 : 0);
    if (count > 1) {
        throw CannotCheck("standard input can be read once: give \"-\" once only");
    }
}

int run_check(const CheckOptions& options) {
    require_one_standard_input(options);
    const Checker checker(options.checker);
    std::optional<ConfigurationFile> running_file;
    if (!options.running.empty()) {
        running_file = read_configuration_file(options.running);
    }
    const Running running = checker.read_running(running_file);
    std::vector<Report> reports;
    if (options.candidates.size() == 1) {
        reports.push_back(
            checker.check(read_configuration_file(options.candidates.front()), running));
    } else {
        for (const std::string& candidate : options.candidates) {
            reports.push_back(check_one(checker, candidate, running));
        }
    }
    print(format_reports(reports, options.format, options.quiet));
    return exit_code(reports, options.accept_warnings);
}
