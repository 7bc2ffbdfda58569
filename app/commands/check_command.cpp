#include <cstdlib>
#include <cstring>
#include <iostream>

#include "commands/commands.h"
#include "commands/exit_code.h"
#include "commands/options.h"
#include "errors/cannot_check.h"
#include "reports/sentences.h"
#include "terminal/output.h"

namespace {

/// Where `reason` says that it is, when it begins as "FILE:LINE:COLUMN: " does, for the file
/// `file`.
Location place_of(const std::string& reason, const std::string& file) {
    Location location{file, 0, 0};
    if (reason.compare(0, file.size() + 1, file + ":") != 0) {
        return {};
    }
    const char* rest = reason.c_str() + file.size() + 1;
    for (std::size_t* const number : {&location.line, &location.column}) {
        const std::size_t digits = std::strspn(rest, "0123456789");
        if (digits == 0 || rest[digits] != ':') {
            break;
        }
        *number = std::strtoul(rest, nullptr, 10);
        rest += digits + 1;
    }
    return location;
}

/// The report on a candidate that could not be checked.
Report unchecked_report(const CheckOptions& options, const std::string& candidate,
                        const std::string& reason) {
    Report report;
    report.candidate = candidate == "-" ? "standard input" : candidate;
    report.running = options.running == "-" ? "standard input" : options.running;
    report.failure = reason;
    report.failure_at = place_of(reason, report.candidate);
    if (!report.failure_at.is_known()) {
        report.failure_at = place_of(reason, report.running);
    }
    return report;
}

/// What is wrong with one candidate must not keep the others from being checked.
Report check_one(const Checker& checker, const CheckOptions& options, const std::string& candidate,
                 const Running& running) {
    try {
        return checker.check(read_configuration_file(candidate, options.max_size), running);
    } catch (const std::exception& error) {
        std::cerr << complaint(error.what());
        Report report = unchecked_report(options, candidate, error.what());
        report.selectors = checker.selectors();
        return report;
    }
}

/// A report for every candidate, whatever cannot be loaded: a reader of the report must never take
/// silence for a clean check.
std::vector<Report> check_all(const CheckOptions& options) {
    std::vector<Report> reports;
    try {
        require_one_standard_input(options);
        const Checker checker(options.checker);
        std::optional<ConfigurationFile> running_file;
        if (!options.running.empty()) {
            running_file = read_configuration_file(options.running, options.max_size);
        }
        const Running running = checker.read_running(running_file);
        for (const std::string& candidate : options.candidates) {
            reports.push_back(check_one(checker, options, candidate, running));
        }
    } catch (const std::exception& error) {
        std::cerr << complaint(error.what());
        reports.clear();
        for (const std::string& candidate : options.candidates) {
            reports.push_back(unchecked_report(options, candidate, error.what()));
        }
    }
    return reports;
}

/// Checks every candidate; the worst outcome is the exit code.
int run_check(const CheckOptions& options) {
    const std::vector<Report> reports = check_all(options);
    print(format_reports(reports, options.report));
    const std::size_t unchecked = count_unchecked(reports);
    if (options.report.quiet && unchecked > 0) {
        std::cerr << complaint(std::to_string(unchecked) + " of " +
                               counted(reports.size(), "candidate") + " not checked");
    }
    return exit_code(reports, options.report.accepts_warnings(reports));
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
        ->type_name("RULE")
        ->allow_extra_args(false);
    command->add_flag("--diff", options->checker.difference,
                      "Print first what the candidate changes");
    add_candidates(*command, options->candidates);
    return {command, [options] { return run_check(*options); }};
}
