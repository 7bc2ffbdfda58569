#include <iostream>
#include <map>

#include "checking/checker.h"
#include "commands/commands.h"
#include "commands/exit_code.h"
#include "commands/options.h"
#include "errors/input_error.h"
#include "files/named_file.h"
#include "reports/report_reader.h"
#include "reports/report_stream.h"
#include "reports/report_text.h"
#include "reports/spool.h"
#include "terminal/output.h"

namespace {

struct ReportCommandOptions {
    ReportOptions report;
    std::size_t accepted_warnings = 0;
    std::string yang_dir;
    std::vector<std::string> files;
};

/// Prints stored reports as one; the worst outcome is the exit code.
int run_report(const ReportCommandOptions& options) {
    std::shared_ptr<const std::vector<Rule>> rules;
    if (options.report.format == "sarif") {  // which tells of them; a stored report does not
        rules = rules_of(YangModel(options.yang_dir));
    }
    Spool document;  // whole, or nothing when one of the files is not
    ReportStream stream(options.report, [&](const std::string& text) { document.write(text); });
    // A candidate that two files report was checked twice, and which of them holds cannot be told.
    std::map<std::pair<std::string, std::string>, std::string> reported;
    std::size_t not_reached = 0;
    for (const std::string& file : options.files) {
        StoredReports stored = read_reports(file, read_named_file(file));
        for (Report& report : stored.reports) {
            const auto [first, is_new] =
                reported.emplace(std::pair(report.candidate, report.running), file);
            if (!is_new) {
                throw InputError(file + ": reports " + report.candidate + ", which " +
                                 first->second + " reports too; give each report once");
            }
            report.rules = rules;
            stream.add(report);
        }
        not_reached += stored.not_reached;
        if (stored.not_reached > 0) {
            std::cerr << complaint(file + ": was interrupted: " +
                                   counted(stored.not_reached, "more candidate") + " not checked");
        }
    }
    stream.finish(not_reached);
    document.copy_to(print);
    return exit_code(stream.summary(), options.accepted_warnings);
}

}  // namespace

Subcommand add_report_command(CLI::App& app) {
    const auto options = std::make_shared<ReportCommandOptions>();
    options->report.counts_clean = true;
    CLI::App* const command =
        add_subcommand(app, "report", "Join stored JSON reports into one, in any format",
                       "--format junit shard-1.json shard-2.json");
    add_report_options(*command, options->report, options->accepted_warnings);
    add_yang_dir(*command, options->yang_dir);
    add_output(*command);
    add_file(*command, "REPORT", options->files, "A report that check --format json printed")
        ->required();
    return {command, [options] {
                options->report.accept_warnings = options->accepted_warnings == kAllWarnings;
                return run_report(*options);
            }};
}
