#include <unistd.h>

#include <csignal>
#include <iostream>

#include "commands/commands.h"
#include "commands/exit_code.h"
#include "commands/options.h"
#include "configuration/document_writer.h"
#include "errors/cannot_check.h"
#include "files/locked_file.h"
#include "terminal/output.h"

namespace {

struct CommitOptions : CheckOptions {
    std::optional<unsigned> lock_timeout;  ///< how long to wait for another commit, in seconds
};

constexpr const char* kOldIsThere = "it is as it was";
constexpr const char* kNewIsThere = "the new configuration is in its place";

/// Asks on the terminal; anything but yes is no.
bool is_answered_yes(const std::string& question) {
    std::cerr << question << " [y/N] ";
    std::string answer;
    std::getline(std::cin, answer);
    return answer == "y" || answer == "Y" || answer == "yes" || answer == "YES";
}

/// Why `report`, which has warnings, is not acted on; empty when the operator takes them. Others
/// may commit while the question waits for its answer.
std::string reason_against(const Report& report, bool is_shown, LockedFile& running) {
    if (isatty(STDIN_FILENO) != 1) {
        return "confirm the warnings with --accept-warnings";
    }
    if (!is_shown) {
        std::cerr << format_text({report}, {true});
    }
    const std::size_t count = report.count(Severity::warning);
    running.unlock();
    const bool is_taken = is_answered_yes("Commit in spite of " + std::to_string(count) +
                                          (count == 1 ? " warning?" : " warnings?"));
    running.lock();
    return is_taken ? "" : "the warnings were not accepted";
}

/// From here on the signals that break a command off wait until it has said what is in place.
void hold_signals() {
    sigset_t signals;
    sigemptyset(&signals);
    for (const int signal : {SIGHUP, SIGINT, SIGTERM}) {
        sigaddset(&signals, signal);
    }
    sigprocmask(SIG_BLOCK, &signals, nullptr);
}

/// Prints `text`; when that fails, says what is in place.
void print_beside(const std::string& running, const char* in_place, const std::string& text) {
    try {
        print(text);
    } catch (const CannotCheck& error) {
        throw CannotCheck(running + ": " + in_place + ", but " + error.what());
    }
}

/// Checks the one candidate and, when nothing is found, makes it the running configuration.
int run_commit(const CommitOptions& options) {
    if (options.running == "-") {
        throw CannotCheck("commit replaces a file: --running cannot be standard input");
    }
    const Checker checker(options.checker);
    const ConfigurationFile candidate_file =
        read_configuration_file(options.candidates.front(), options.max_size);
    // Held from before the running configuration is read: what was checked must still hold when it
    // is replaced.
    const auto say = [](const std::string& message) { std::cerr << complaint(message); };
    LockedFile running(options.running, options.max_size, {options.lock_timeout, say});
    std::optional<ConfigurationFile> running_file;
    if (running.bytes()) {
        running_file = configuration_from_bytes(options.running, *running.bytes());
    }
    const Running before = checker.read_running(running_file);
    const Configuration candidate = checker.read_candidate(candidate_file, before);
    const std::string bytes = candidate.document.is_from_edit()
                                  ? write_as_running(candidate.document, before.document_or_null())
                                  : candidate_file.bytes;
    std::vector<Report> reports = {checker.check(candidate, before)};
    Report& report = reports.front();
    // A reader sees the findings before a question about them; a program gets one whole report.
    const bool is_text = options.report.format == "text";
    if (is_text) {
        print_beside(options.running, kOldIsThere, format_reports(reports, options.report));
    }
    const int result =
        exit_code(reports, options.report.accepts(reports.front().count(Severity::warning)));
    std::string refusal = result == kExitErrors ? "there are errors" : "";
    if (result == kExitWarnings) {
        refusal = reason_against(report, is_text && !options.report.silent, running);
    }
    report.committed = refusal.empty();
    std::string undone_by;
    if (*report.committed) {
        hold_signals();
        undone_by = running.replace(bytes);
    }
    const std::string told =
        "committed: " + printable(options.running + " is now " + candidate_file.name) + "\n";
    print_beside(options.running, *report.committed ? kNewIsThere : kOldIsThere,
                 !is_text ? format_reports(reports, options.report)
                 : *report.committed && !options.report.quiet && !options.report.silent ? told
                                                                                        : "");
    if (!refusal.empty()) {
        std::cerr << complaint(options.running + ": not committed: " + refusal);
        return result;
    }
    if (!undone_by.empty()) {
        throw CannotCheck(options.running + ": " + kNewIsThere +
                          ", but a power failure may undo that: " + undone_by);
    }
    return kExitClean;
}

}  // namespace

Subcommand add_commit_command(CLI::App& app) {
    const auto options = std::make_shared<CommitOptions>();
    CLI::App* const command =
        add_subcommand(app, "commit", "Check a configuration and make it the running one",
                       "--running running.json candidate.json");
    add_running(*command, options->running, "The running configuration, to be replaced")
        ->required();
    add_check_options(*command, *options);
    command
        ->add_option("--lock-timeout", options->lock_timeout,
                     "How long to wait for another commit; to its end unless given")
        ->type_name("SECONDS");
    add_candidates(*command, options->candidates)->expected(1);
    return {command, [options] { return run_commit(*options); }};
}
