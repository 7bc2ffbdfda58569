#include "commands/commands.h"
#include "commands/exit_code.h"
#include "commands/options.h"
#include "configuration/skipped_difference.h"
#include "configuration/yang_model.h"
#include "reports/difference_text.h"
#include "reports/report_json.h"
#include "terminal/output.h"

namespace {

/// Prints what the one candidate changes in the running configuration.
int run_diff(const CheckOptions& options) {
    require_one_standard_input({options.running, options.candidates.front()});
    const YangModel model(options.checker.yang_dir);
    const ReadOptions reading{options.checker.is_edit, options.checker.ignore_unknown};
    const Document running = model.parse(read_configuration_file(options.running, options.max_size),
                                         {false, reading.ignore_unknown});
    const Configuration candidate = model.candidate(
        read_configuration_file(options.candidates.front(), options.max_size), reading, &running);
    std::vector<Change> changes = difference(model.tree(running), candidate.tree);
    add_skipped_changes(&running, candidate.document, changes);
    print(options.report.format == "json"
              ? format_difference_json(running.name(), candidate.document.name(), changes)
              : format_difference_text(changes, wants_colour(options.report.colour)));
    return changes.empty() ? kExitClean : kExitDifferences;
}

}  // namespace

Subcommand add_diff_command(CLI::App& app) {
    const auto options = std::make_shared<CheckOptions>();
    CLI::App* const command = add_subcommand(app, "diff", "Print what a configuration changes",
                                             "--running running.json candidate.json");
    add_running(*command, options->running, "The running configuration")->required();
    command->add_option("--format", options->report.format, "How to print the changes")
        ->check(CLI::IsMember({"text", "json"}))
        ->capture_default_str()
        ->configurable(false);  // a default for findings is none for changes
    add_colour(*command, options->report.colour);
    add_reading_options(*command, options->checker);
    add_max_size(*command, options->max_size);
    add_yang_dir(*command, options->checker.yang_dir);
    add_candidates(*command, options->candidates)->expected(1);
    return {command, [options] { return run_diff(*options); }};
}
