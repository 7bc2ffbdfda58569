#include "commands/commands.h"
#include "commands/exit_code.h"
#include "configuration/yang_model.h"
#include "reports/difference_report.h"
#include "terminal/output.h"

int run_diff(const CheckOptions& options) {
    require_one_standard_input(options);
    const YangModel model(options.checker.yang_dir);
    const ConfigurationFile running = read_configuration_file(options.running);
    const ConfigurationFile candidate = read_configuration_file(options.candidates.front());
    const std::vector<Change> changes = difference(model.read(running), model.read(candidate));
    print(options.format == "json" ? format_difference_json(running.name, candidate.name, changes)
                                   : format_difference_text(changes, wants_colour()));
    return changes.empty() ? kExitClean : kExitDifferences;
}
