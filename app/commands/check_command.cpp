#include <iostream>

#include "commands/commands.h"
#include "commands/exit_code.h"
#include "commands/options.h"
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

/// Checks every candidate; the worst outcome is the exit code.
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

}  // namespace

Subcommand add_check_command(CLI::App& app) {
    const auto options = std::make_shared<CheckOptions>();
    CLI::App* const command = add_subcommand(app, "check", "Check configurations",
                                             "--running running.json candidate.json");
    add_running(*command, options->running, "The running configuration; empty without it");
    add_check_options(*command, *options);
    command
        ->add_option("--rule", options->checker.selectors, "Run this rule only; can be given again")
        ->type_name("SELECTOR")
        ->allow_extra_args(false);
    command->add_flag("--diff", options->checker.difference,
                      "Print first what the candidate changes");
    add_candidates(*command, options->candidates);
    return {command, [options] { return run_check(*options); }};
}
