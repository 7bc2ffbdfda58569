#include <algorithm>
#include <chrono>
#include <filesystem>
#include <iostream>

#include "commands/commands.h"
#include "commands/exit_code.h"
#include "commands/options.h"
#include "errors/input_error.h"
#include "fleet/fleet.h"
#include "reports/report_stream.h"
#include "reports/report_text.h"
#include "terminal/interrupt.h"
#include "terminal/output.h"
#include "terminal/progress.h"

namespace {

struct FleetOptions : CheckOptions {
    std::string files_from;
    bool allow_missing_running = false;
};

/// The run that the operator sees: its reports as they come, and how far it is.
class Run {
  public:
    explicit Run(const FleetOptions& options)
        : stream_(options.report, [this](const std::string& text) {
              progress_.clear();
              print(text);
          }) {}

    /// Reports the next of `count` candidates.
    void add(const Report& report, std::size_t count) {
        if (!report.failure.empty()) {
            progress_.clear();
            std::cerr << complaint(report.failure);
        }
        stream_.add(report);
        if (count > 1) {
            progress_.show(state(count));
        }
    }

    /// Reports that no candidate could be checked.
    void give_up(const std::vector<Pair>& pairs, const std::exception& error) {
        std::cerr << complaint(error.what());
        for (const Pair& pair : pairs) {
            stream_.add(not_checked_report(pair, error));
        }
    }

    const Summary& finish(std::size_t not_reached) {
        stream_.finish(not_reached);
        progress_.clear();
        return stream_.summary();
    }

  private:
    std::string state(std::size_t count) const {
        using Seconds = std::chrono::duration<double>;
        const Summary& summary = stream_.summary();
        const double taken = Seconds(std::chrono::steady_clock::now() - start_).count();
        const double left = taken / static_cast<double>(summary.candidates) *
                            static_cast<double>(count - summary.candidates);
        return std::to_string(summary.candidates) + " of " + counted(count, "candidate") + ", " +
               counted(summary.errors + summary.warnings, "finding") + ", " +
               std::to_string(static_cast<long>(left) + 1) + " s left";
    }

    Progress progress_;
    ReportStream stream_;
    std::chrono::steady_clock::time_point start_ = std::chrono::steady_clock::now();
};

/// What the operator named, for as long as nothing is known of what that is.
std::vector<Pair> named_pairs(const FleetOptions& options) {
    std::vector<Pair> pairs;
    for (const std::string& candidate : options.candidates) {
        pairs.push_back({candidate, options.running, {}});
    }
    if (!options.files_from.empty()) {
        pairs.push_back({options.files_from, {}, {}});
    }
    return pairs;
}

/// Checks every candidate; the worst outcome is the exit code.
int run_check(const FleetOptions& options) {
    if (options.candidates.empty() && options.files_from.empty()) {
        throw InputError(
            "no candidate: give CANDIDATE or --files-from; run vrrp-valid check --help");
    }
    const Interrupt interrupt;
    Run run(options);
    std::vector<Pair> pairs = named_pairs(options);
    std::optional<Checker> checker;
    std::size_t taken = 0;
    bool is_begun = false;
    try {
        std::vector<std::string> files = options.candidates;
        files.insert(files.end(), {options.running, options.files_from});
        require_one_standard_input(files);
        pairs = pair_files({options.candidates, options.running, options.files_from,
                            options.allow_missing_running});
        checker.emplace(options.checker);
        taken = check_fleet(
            {*checker, pairs, options.checker.threads, options.max_size, interrupt.is_noted()},
            [&](const Report& report) {
                is_begun = true;
                run.add(report, pairs.size());
            });
    } catch (const std::exception& error) {
        if (is_begun) {
            throw;
        }
        run.give_up(pairs, error);
        taken = pairs.size();
    }
    const Summary& summary = run.finish(pairs.size() - taken);
    if (options.report.quiet && summary.not_checked > 0) {
        std::cerr << complaint(std::to_string(summary.not_checked) + " of " +
                               counted(summary.candidates, "candidate") + " could not be checked");
    }
    if (checker) {
        checker->unload_plugin();
    }
    if (taken < pairs.size()) {
        std::cerr << complaint("interrupted: " + std::to_string(pairs.size() - taken) + " of " +
                               counted(pairs.size(), "candidate") + " not checked");
        return kInterrupted;
    }
    return exit_code(summary,
                     options.report.accept_warnings || summary.warnings <= options.max_warnings);
}

bool is_folder(const std::string& name) {
    std::error_code error;
    return std::filesystem::is_directory(name, error);
}

}  // namespace

Subcommand add_check_command(CLI::App& app) {
    const auto options = std::make_shared<FleetOptions>();
    CLI::App* const command = add_subcommand(app, "check", "Check configurations",
                                             "--running running.json candidate.json");
    add_running(*command, options->running,
                "The running configuration, or a folder of them; without it, an empty one");
    add_check_options(*command, *options);
    command
        ->add_option("--rule", options->checker.rule_names,
                     "Run only this rule; can be given more than once")
        ->type_name("RULE")
        ->allow_extra_args(false);
    command->add_flag("--diff", options->checker.difference,
                      "First print what the candidate changes");
    command
        ->add_option("--files-from", options->files_from,
                     "A list of candidates, one on each line; after a tab, the running "
                     "configuration of each")
        ->type_name("FILE");
    command->add_flag("--allow-missing-running", options->allow_missing_running,
                      "Check a candidate that has no running configuration against an empty one");
    add_candidates(*command, options->candidates)->required(false);
    return {command, [options] {
                options->report.counts_clean =
                    !options->files_from.empty() ||
                    std::any_of(options->candidates.begin(), options->candidates.end(), is_folder);
                // The page shows the whole change.
                options->checker.difference |= options->report.format == "html";
                options->checker.times_rules = options->report.format == "junit";
                return run_check(*options);
            }};
}
