#include "checker.h"

#include <algorithm>

#include "cannot_judge.h"
#include "key_file.h"
#include "output.h"
#include "progress.h"
#include "report_format.h"

using local_platform::DataTree;

namespace {

/// A selector that the model does not use would make a check that can only pass.
void require_known(const std::set<std::string>& wanted, const std::vector<std::string>& known) {
    for (const std::string& selector : wanted) {
        if (std::find(known.begin(), known.end(), selector) == known.end()) {
            throw CannotJudge("--rule " + selector +
                              ": the model uses no such rule; vrrp-valid rules lists them");
        }
    }
}

int severity_rank(int code) {
    switch (code) {
        case kExitCannotJudge:
            return 3;
        case kExitErrors:
            return 2;
        case kExitWarnings:
            return 1;
        default:
            return 0;
    }
}

int exit_code(const Report& report, bool accept_warnings) {
    if (!report.failure.empty()) {
        return kExitCannotJudge;
    }
    if (report.count(Severity::error) > 0) {
        return kExitErrors;
    }
    return report.findings.empty() || accept_warnings ? kExitClean : kExitWarnings;
}

}  // namespace

Checker::Checker(const JudgeOptions& options)
    : model_(options.yang_dir),
      host_(options.plugin_file),
      key_(options.key_file.empty() ? std::nullopt
                                    : std::optional(read_key_file(options.key_file))),
      selectors_(options.selectors.begin(), options.selectors.end()) {
    require_known(selectors_, model_.selectors());
}

Running Checker::read_running(const std::optional<ConfigurationFile>& file) const {
    return file ? Running{file->name, model_.read(*file)} : Running{{}, DataTree(model_.schema())};
}

Report Checker::check(const ConfigurationFile& candidate, const Running& running) const {
    Report report;
    report.candidate = candidate.name;
    report.running = running.name;
    for (const std::string& selector : model_.selectors()) {
        if (selectors_.empty() || selectors_.count(selector) > 0) {
            report.selectors.push_back(selector);
        }
    }
    const Transaction transaction{model_.read(candidate), running.tree, key_};
    Progress progress;
    const auto show = [&progress](const Report& so_far) {
        progress.show(so_far.candidate, so_far.requests);
    };
    run_judge({model_, host_, selectors_, show}, transaction, report);
    return report;
}

std::string format_reports(const std::vector<Report>& reports, const JudgeOptions& options) {
    if (options.quiet) {
        return {};
    }
    if (options.format == "json") {
        return format_json(reports);
    }
    return options.format == "junit" ? format_junit(reports) : format_text(reports, wants_colour());
}

int exit_code(const std::vector<Report>& reports, bool accept_warnings) {
    int worst = kExitClean;
    for (const Report& report : reports) {
        const int code = exit_code(report, accept_warnings);
        worst = severity_rank(code) > severity_rank(worst) ? code : worst;
    }
    return worst;
}
