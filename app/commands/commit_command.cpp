#include <unistd.h>

#include <iostream>

#include "commands/commands.h"
#include "commands/exit_code.h"
#include "commands/options.h"
#include "errors/cannot_check.h"
#include "files/replace_file.h"
#include "terminal/output.h"

namespace {

/// Asks on the terminal; anything but yes is no, and so is the lack of a terminal.
bool is_confirmed(std::size_t warnings) {
    if (isatty(STDIN_FILENO) != 1) {
        std::cerr << "vrrp-valid: not committed: confirm the warnings with --accept-warnings\n";
        return false;
    }
    std::cerr << "Commit in spite of " << warnings << (warnings == 1 ? " warning" : " warnings")
              << "? [y/N] ";
    std::string answer;
    std::getline(std::cin, answer);
    return answer == "y" || answer == "Y" || answer == "yes";
}

/// Prints `text`; when that fails, says what the running configuration is by then.
void print_beside(const std::string& running, const char* state, const std::string& text) {
    try {
        print(text);
    } catch (const CannotCheck& error) {
        throw CannotCheck(running + ": " + state + ", but " + error.what());
    }
}

/// Checks the one candidate and, when nothing is found, makes it the running configuration.
int run_commit(const CheckOptions& options) {
    if (options.running == "-") {
        throw CannotCheck("commit replaces a file: --running cannot be standard input");
    }
    const Checker checker(options.checker);
    const ConfigurationFile candidate = read_configuration_file(options.candidates.front());
    // Held from before the running configuration is read: the verdict must still hold when it is
    // replaced.
    const FolderLock lock(options.running);
    std::optional<ConfigurationFile> running;
    if (std::optional<std::string> bytes = lock.read_file()) {
        running = configuration_from_bytes(options.running, std::move(*bytes));
    }
    const std::vector<Report> reports = {checker.check(candidate, checker.read_running(running))};
    print_beside(options.running, "it is as it was", format_reports(reports, options.report));
    const int result = exit_code(reports, options.report.accept_warnings);
    if (result == kExitErrors) {
        return result;
    }
    if (result == kExitWarnings && !is_confirmed(reports.front().count(Severity::warning))) {
        return result;
    }
    lock.replace_file(candidate.bytes);
    if (options.report.format == "text" && !options.report.quiet && !options.report.silent) {
        print_beside(
            options.running, "the new configuration is in its place",
            "committed: " + printable(options.running + " is now " + candidate.name) + "\n");
    }
    return kExitClean;
}

}  // namespace

Subcommand add_commit_command(CLI::App& app) {
    const auto options = std::make_shared<CheckOptions>();
    CLI::App* const command =
        add_subcommand(app, "commit", "Check a configuration and make it the running one",
                       "--running running.json candidate.json");
    add_running(*command, options->running, "The running configuration, to be replaced")
        ->required();
    add_check_options(*command, *options);
    add_candidates(*command, options->candidates)->expected(1);
    return {command, [options] { return run_commit(*options); }};
}
