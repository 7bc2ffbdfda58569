#include <unistd.h>

#include <algorithm>
#include <cctype>
#include <csignal>
#include <iostream>

#include "commands/commands.h"
#include "commands/exit_code.h"
#include "commands/options.h"
#include "configuration/document_writer.h"
#include "errors/input_error.h"
#include "files/locked_file.h"
#include "fleet/fleet.h"
#include "reports/report_text.h"
#include "terminal/output.h"

namespace {

struct CommitOptions : CheckOptions {
    bool yes = false;                      ///< commit without a question, but for warnings
    std::optional<unsigned> lock_timeout;  ///< how long to wait for another commit, in seconds

    const std::string& candidate() const { return candidates.front(); }
    bool is_text() const { return report.format == "text"; }
};

constexpr const char* kOldIsThere = "nothing was changed";
constexpr const char* kNewIsThere = "the new configuration is in its place";

std::optional<ConfigurationFile> content_of(const LockedFile& file, const std::string& name) {
    if (!file.bytes()) {
        return std::nullopt;
    }
    return configuration_from_bytes(name, *file.bytes());
}

void say(const std::string& message) {
    std::cerr << complaint(message);
}

/// A candidate that was checked against the running file, which is locked from before it was read:
/// what was checked must still hold when it is replaced.
struct CheckedChange {
    explicit CheckedChange(const CommitOptions& options)
        : checker(options.checker),
          candidate_file(read_configuration_file(options.candidate(), options.max_size)),
          running_file(options.running, options.max_size, {options.lock_timeout, say}),
          running(checker.read_running(content_of(running_file, options.running))),
          candidate(checker.read_candidate(candidate_file, running)),
          result(write_as_running(candidate.document, running.document_or_null())),
          report(checker.check(candidate, running)) {}

    /// Whether the running file holds already what it is to hold.
    bool is_none() const { return running_file.bytes() && report.changes->empty(); }

    Checker checker;
    ConfigurationFile candidate_file;
    LockedFile running_file;
    Running running;
    Configuration candidate;
    std::string result;  ///< what the running file is to hold
    Report report;
};

/// Asks on the terminal; anything but yes is no.
bool is_answered_yes(const std::string& question) {
    std::cerr << question << "? [y/N] ";
    std::string answer;
    std::getline(std::cin, answer);
    std::transform(answer.begin(), answer.end(), answer.begin(),
                   [](unsigned char c) { return static_cast<char>(std::tolower(c)); });
    return answer == "y" || answer == "yes";
}

/// Shows the report to who is to answer a question about it, unless the terminal has it already.
void show_before_question(const CommitOptions& options, const Report& report) {
    if (!options.is_text() || options.report.silent || isatty(STDOUT_FILENO) != 1) {
        std::cerr << format_text(report, {});
    }
}

std::string how_to_confirm(bool has_warnings, bool has_yes) {
    const char* const accept = has_warnings ? "accept the warnings with --accept-warnings" : "";
    const char* const confirm = has_yes ? "" : "confirm it with --yes";
    return std::string(accept) + (has_warnings && !has_yes ? ", and " : "") + confirm;
}

/// Why `change`, of whose check the exit code is `checked`, is not to be committed; empty when it
/// is. Others may commit while a question waits for its answer.
std::string reason_against(CheckedChange& change, const CommitOptions& options, int checked) {
    if (checked == kExitErrors) {
        return "there are errors";
    }
    const bool has_warnings = checked == kExitWarnings;
    if (!has_warnings && options.yes) {
        return {};
    }
    if (isatty(STDIN_FILENO) != 1 || isatty(STDERR_FILENO) != 1) {
        return how_to_confirm(has_warnings, options.yes);
    }
    show_before_question(options, change.report);
    change.running_file.unlock();
    const std::string warnings = counted(change.report.count(Severity::warning), "warning");
    if (has_warnings && !is_answered_yes("Accept " + warnings)) {
        return "the warnings were not accepted";
    }
    if (!options.yes && !is_answered_yes("Commit")) {
        return "it was not confirmed";
    }
    change.running_file.lock();
    return {};
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

/// Prints what `text` gives; when that fails, says what is in place.
void print_beside(const std::string& running, const char* in_place,
                  const std::function<std::string()>& text) {
    try {
        print(text());
    } catch (const InputError& error) {
        throw InputError(running + ": " + in_place + ", but " + error.what());
    }
}

/// A reader has the findings before a question about them, and then what came of it; a program gets
/// one whole report at the end.
void print_end(const CommitOptions& options, const Report& report) {
    const char* const in_place = *report.committed ? kNewIsThere : kOldIsThere;
    if (!options.is_text()) {
        print_beside(options.running, in_place,
                     [&] { return format_reports({report}, options.report); });
    } else if (*report.committed && !options.report.quiet && !options.report.silent) {
        print_beside(options.running, in_place, [&] {
            return "committed: " + printable(report.candidate + " to " + options.running) + "\n";
        });
    }
}

/// What came of a commit.
struct Ending {
    int code = kExitClean;
    std::string why;  ///< nothing was committed, or what else a reader must know; may be empty
    bool is_committed = false;
};

Ending commit(CheckedChange& change, const CommitOptions& options) {
    const int checked =
        exit_code({change.report}, options.report.accepts(change.report.count(Severity::warning)));
    try {
        change.checker.unload_plugin();
    } catch (const std::exception& error) {
        return {kExitCannotCheck, options.running + ": not committed: " + error.what()};
    }
    if (change.is_none() && checked != kExitErrors) {
        return {checked, {}, false};
    }
    const std::string refusal = reason_against(change, options, checked);
    if (!refusal.empty()) {
        return {checked == kExitClean ? kExitUnconfirmed : checked,
                options.running + ": not committed: " + refusal};
    }
    hold_signals();
    const std::string undone_by = change.running_file.replace(change.result);
    if (undone_by.empty()) {
        return {kExitClean, {}, true};
    }
    return {
        kExitCannotCheck,
        options.running + ": " + kNewIsThere + ", but a power failure may undo that: " + undone_by,
        true};
}

int run_commit(const CommitOptions& options) {
    if (options.running == "-") {
        throw InputError("commit replaces a file: --running cannot be standard input");
    }
    std::optional<CheckedChange> change;
    Report not_checked;
    Ending ending;
    try {
        change.emplace(options);
        if (options.is_text()) {
            print_beside(options.running, kOldIsThere,
                         [&] { return format_reports({change->report}, options.report); });
        }
        ending = commit(*change, options);
    } catch (const std::exception& error) {
        ending = {kExitCannotCheck, error.what()};
        not_checked = not_checked_report({options.candidate(), options.running, {}}, error);
    }
    Report& report = change ? change->report : not_checked;
    report.committed = ending.is_committed;
    print_end(options, report);
    if (!ending.why.empty()) {
        say(ending.why);
    }
    return ending.code;
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
    options->checker.difference = true;
    command->add_flag("-y,--yes", options->yes,
                      "Commit without asking; for warnings, give --accept-warnings as well");
    command
        ->add_option("--lock-timeout", options->lock_timeout,
                     "How long to wait for another commit; without it, until that ends")
        ->check(whole_number(0))
        ->type_name("SECONDS");
    add_candidates(*command, options->candidates)->expected(1);
    return {command, [options] {
                options->checker.times_rules = options->report.format == "junit";
                return run_commit(*options);
            }};
}
