#include "commands/commands.h"
#include "commands/exit_code.h"
#include "commands/options.h"
#include "configuration/yang_model.h"
#include "reports/difference_text.h"
#include "reports/report_json.h"
#include "reports/report_text.h"
#include "terminal/output.h"
#include "trees/difference.h"

namespace {

struct DiffOptions {
    std::string running;
    std::string candidate;
    std::string format = "text";
    std::string colour = "auto";
    std::string yang_dir;
    bool is_edit = false;
    bool ignore_unknown = false;
    std::size_t max_size = kLargestFile;
};

/// Prints what the candidate changes in the running configuration.
int run_diff(const DiffOptions& options) {
    require_one_standard_input({options.running, options.candidate});
    const YangModel model(options.yang_dir);
    const Configuration running =
        model.read(read_configuration_file(options.running, options.max_size),
                   {false, options.ignore_unknown});
    const Configuration candidate =
        model.read(read_configuration_file(options.candidate, options.max_size),
                   {options.is_edit, options.ignore_unknown}, &running);
    const std::vector<Change> changes = difference(running.tree, candidate.tree);
    // An edit's has the running configuration's.
    UnknownData not_compared = candidate.is_edit ? UnknownData() : running.unknown_data;
    not_compared.add(candidate.unknown_data);
    if (options.format == "json") {
        print(format_difference_json(running.name(), candidate.name(), changes, not_compared));
    } else {
        print(format_difference_text(changes, wants_colour(options.colour)));
        for (const std::string& text : unknown_data_texts(not_compared, "compared")) {
            print(text + "\n");
        }
    }
    return changes.empty() ? kExitClean : kExitDifferences;
}

}  // namespace

Subcommand add_diff_command(CLI::App& app) {
    const auto options = std::make_shared<DiffOptions>();
    CLI::App* const command = add_subcommand(app, "diff", "Print what a configuration changes",
                                             "--running running.json candidate.json");
    add_file(*command, "--running", options->running, "The running configuration")->required();
    command->add_option("--format", options->format, "How to print the changes")
        ->check(CLI::IsMember({"text", "json"}))
        ->capture_default_str()
        ->configurable(false);  // a default for findings is none for changes
    add_reading_options(*command, options->is_edit, options->ignore_unknown);
    add_max_size(*command, options->max_size);
    add_yang_dir(*command, options->yang_dir);
    add_output(*command);
    add_colour(*command, options->colour);
    add_candidate(*command, options->candidate)->required();
    return {command, [options] { return run_diff(*options); }};
}
