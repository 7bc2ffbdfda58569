#include <unistd.h>

#include <algorithm>
#include <iostream>
#include <thread>

#include "commands/commands.h"
#include "commands/exit_code.h"
#include "commands/install_layout.h"
#include "commands/options.h"
#include "commands/output_conflict.h"
#include "errors/input_error.h"
#include "files/interrupt.h"
#include "files/named_file.h"
#include "fleet/fleet.h"
#include "reports/report_stream.h"
#include "reports/report_text.h"
#include "terminal/output.h"
#include "terminal/progress.h"

namespace {

struct CheckOptions {
    CheckerOptions checker;
    PairingOptions pairing;
    ReportOptions report;
    std::size_t accepted_warnings = 0;
    std::size_t max_size = kLargestFile;  ///< of each file, in bytes
    std::string output;                   ///< empty for standard output
};

/// Prints the reports as they come and, on a terminal, how far the run is.
class ReportPrinter {
  public:
    explicit ReportPrinter(const ReportOptions& options)
        : tells_why_(!options.is_for_reader()), stream_(options, [this](const std::string& text) {
              if (is_terminal(STDOUT_FILENO)) {  // on which the line is in the way
                  progress_.clear();
              }
              print(text);
          }) {}

    /// Prints the next of `count` reports.
    void add(const Report& report, std::size_t count) {
        if (tells_why_ && !report.failure.empty()) {
            progress_.clear();
            std::cerr << complaint(report.failure);
        }
        stream_.add(report);
        if (count > 1) {
            progress_.show(std::to_string(summary().candidates) + " of " +
                           counted(count, "candidate") + ", " +
                           counted(summary().errors + summary().warnings, "finding"));
        }
    }

    /// Reports that none of `pairs` could be checked.
    void give_up(const std::vector<Pair>& pairs, const std::exception& error) {
        std::cerr << (tells_why_ ? complaint(error.what()) : "");
        for (const Pair& pair : pairs) {
            stream_.add(not_checked_report(pair, error));
        }
    }

    void finish(std::size_t not_reached, const std::vector<std::string>& notes) {
        stream_.finish(not_reached, notes);
        progress_.clear();
    }

    const Summary& summary() const { return stream_.summary(); }

  private:
    bool tells_why_;  ///< on standard error, of what could not be checked
    Progress progress_;
    ReportStream stream_;
};

using Texts = std::vector<std::string>;

/// Throws InputError when a file is to be read twice and cannot be, or is to be written as well.
void require_readable(const CheckOptions& options, const std::vector<Pair>& pairs) {
    Texts files = {options.pairing.running, options.pairing.files_from};
    for (const Pair& pair : pairs) {
        files.push_back(pair.candidate);
    }
    require_one_standard_input(files);
    for (const Pair& pair : pairs) {
        files.push_back(pair.running);
    }
    require_no_input(options.output, files);
}

/// What the summary says of the named folders.
Texts folder_notes(const Pairing& pairing) {
    Texts notes;
    if (pairing.hidden > 0) {
        notes.push_back(counted(pairing.hidden, "hidden name") + " not checked");
    }
    if (pairing.running_alone > 0) {
        notes.push_back(counted(pairing.running_alone, "running configuration") +
                        " without a candidate");
    }
    return notes;
}

/// Adds how many rules run, when they are not all of those that the plug-in has, as the installed
/// models say.
void add_rule_note(const Checker& checker, const CheckerOptions& options, Texts& notes) {
    const std::string installed = default_yang_dir();
    if ((options.yang_dir == installed && options.rule_names.empty()) || !is_folder(installed)) {
        return;
    }
    const std::size_t all = YangModel(installed).rule_names().size();
    const std::size_t run = checker.rule_names().size();
    if (run < all) {
        notes.push_back(std::to_string(run) + " of " + counted(all, "rule") + " run");
    }
}

/// Checks every candidate; the worst outcome is the exit code.
int run_check(const CheckOptions& options) {
    if (options.pairing.candidates.empty() && options.pairing.files_from.empty()) {
        throw InputError(
            "no candidate: give CANDIDATE or --files-from; run vrrp-valid check --help");
    }
    note_interrupts();
    const Pairing pairing = pair_files(options.pairing);
    const std::vector<Pair>& pairs = pairing.pairs;
    require_readable(options, pairs);
    Texts notes = folder_notes(pairing);
    ReportPrinter printer(options.report);
    std::optional<Checker> checker;
    std::size_t taken = 0;
    try {
        checker.emplace(options.checker);
        add_rule_note(*checker, options.checker, notes);
        taken = check_fleet({*checker, pairs, options.checker.threads, options.max_size},
                            [&](const Report& report) { printer.add(report, pairs.size()); });
    } catch (const std::exception& error) {
        if (printer.summary().candidates > 0) {
            throw;
        }
        printer.give_up(pairs, error);
        taken = pairs.size();
    }
    printer.finish(pairs.size() - taken, notes);
    const Summary& summary = printer.summary();
    if (options.report.is_for_reader() && summary.not_checked > 0) {
        std::cerr << complaint(std::to_string(summary.not_checked) + " of " +
                               counted(summary.candidates, "candidate") + " could not be checked");
    }
    if (checker) {
        checker->unload_plugin();
    }
    if (taken < pairs.size()) {
        std::cerr << complaint(not_reached_text(pairs.size() - taken));
        return kInterrupted;
    }
    return exit_code(summary, options.accepted_warnings);
}

void add_pairing_options(CLI::App& command, PairingOptions& options) {
    add_file(command, "--files-from", options.files_from,
             "A list of candidates, one on each line; after a tab, the running configuration of "
             "each");
    command.add_flag("--allow-missing-running", options.allow_missing_running,
                     "Check a candidate that has no running configuration against an empty one");
    add_file(command, "--stdin-filename", options.stdin_name, "What reports call standard input")
        ->type_name("NAME");
    add_candidate(command, options.candidates);
}

void add_rule_options(CLI::App& command, CheckerOptions& options) {
    options.plugin_file = default_plugin_file();
    command
        .add_option("--rule", options.rule_names, "Run only this rule; can be given more than once")
        ->type_name("RULE")
        ->allow_extra_args(false);
    add_file(command, "--key-file", options.key_file, "The key of encrypted passwords");
    add_yang_dir(command, options.yang_dir);
    add_file(command, "--plugin", options.plugin_file, "The plug-in with the rules");
}

void add_limits(CLI::App& command, CheckerOptions& options) {
    command
        .add_option("--max-findings", options.max_findings,
                    "Print at most this many findings of each rule, and count the rest")
        ->check(whole_number(0))
        ->type_name("NUMBER")
        ->capture_default_str();
    options.threads = std::max(1U, std::thread::hardware_concurrency());
    command.add_option("-j,--jobs", options.threads, "Number of threads; default: all cores")
        ->check(whole_number(1))
        ->type_name("NUMBER");
}

}  // namespace

Subcommand add_check_command(CLI::App& app) {
    const auto options = std::make_shared<CheckOptions>();
    CLI::App* const command = add_subcommand(app, "check", "Check configurations",
                                             "--running running.json candidate.json");
    command->option_defaults()->group("What to check");
    add_file(*command, "--running", options->pairing.running,
             "The running configuration, or a folder of them; without it, an empty one");
    add_reading_options(*command, options->checker.is_edit, options->checker.ignore_unknown);
    add_pairing_options(*command, options->pairing);
    add_rule_options(*command, options->checker);
    command->option_defaults()->group("How to report");
    add_report_options(*command, options->report, options->accepted_warnings);
    command->add_flag("--diff", options->checker.difference,
                      "First print what the candidate changes");
    add_output(*command);
    command->option_defaults()->group("Limits");
    add_limits(*command, options->checker);
    add_max_size(*command, options->max_size);
    return {command, [options, command] {
                options->output = output_of(*command);
                const std::vector<std::string>& candidates = options->pairing.candidates;
                options->report.accept_warnings = options->accepted_warnings == kAllWarnings;
                options->report.counts_clean =
                    !options->pairing.files_from.empty() ||
                    std::any_of(candidates.begin(), candidates.end(), is_folder);
                // The page shows the whole change.
                options->checker.difference |= options->report.format == "html";
                return run_check(*options);
            }};
}
