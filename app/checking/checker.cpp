#include "checking/checker.h"

#include <algorithm>
#include <chrono>

#include "errors/did_you_mean.h"
#include "errors/input_error.h"
#include "files/interrupt.h"
#include "files/key_file.h"
#include "terminal/progress.h"
#include "trees/difference.h"

namespace {

/// A rule that the model does not bind would make a check that can only pass.
void require_known(const std::vector<std::string>& wanted, const std::vector<std::string>& known,
                   const std::string& yang_dir) {
    if (known.empty()) {
        throw InputError(yang_dir + ": the YANG modules use no rule; check --yang-dir");
    }
    for (const std::string& rule : wanted) {
        if (std::find(known.begin(), known.end(), rule) == known.end()) {
            throw InputError("--rule: there is no rule \"" + rule + "\"" +
                             did_you_mean(rule, known) + "; run vrrp-valid rules");
        }
    }
}

/// That the candidate has none of the instances that are running, which nobody does every day.
Finding removes_all(const Report& report, bool is_edit) {
    const std::size_t count = report.removed_instances;
    Finding finding;
    finding.severity = Severity::warning;
    finding.rule = "removes-all-instances";
    finding.message = (count == 1 ? std::string("removes the only VRRP instance")
                                  : "removes all " + std::to_string(count) + " VRRP instances") +
                      (is_edit ? "" : "; is this an edit? give --edit");
    return finding;
}

}  // namespace

std::shared_ptr<const std::vector<Rule>> rules_of(const YangModel& model) {
    std::vector<Rule> rules;
    model.for_each_rule(
        [&](const std::string& /*path*/, const Rule& rule) { rules.push_back(rule); });
    return std::make_shared<const std::vector<Rule>>(std::move(rules));
}

Checker::Checker(const CheckerOptions& options)
    : model_(options.yang_dir),
      rules_(rules_of(model_)),
      host_(options.plugin_file),
      key_(options.key_file.empty() ? std::nullopt
                                    : std::optional(read_key_file(options.key_file))),
      options_(options) {
    require_known(options_.rule_names, model_.rule_names(), options_.yang_dir);
}

Configuration Checker::read_running(const std::shared_ptr<SourceText>& file) const {
    if (file == nullptr) {
        return {{}, {}, local_platform::DataTree(model_.schema())};
    }
    return model_.read(file, {false, options_.ignore_unknown});
}

std::vector<std::string> Checker::rule_names() const {
    std::vector<std::string> names;
    const auto& wanted = options_.rule_names;
    for (const std::string& name : model_.rule_names()) {
        if (wanted.empty() || std::count(wanted.begin(), wanted.end(), name) > 0) {
            names.push_back(name);
        }
    }
    return names;
}

Report Checker::check(const std::shared_ptr<SourceText>& file, const Configuration& running,
                      std::size_t threads, bool shows_progress) const {
    using Clock = std::chrono::steady_clock;
    const auto start = Clock::now();
    const Configuration candidate =
        model_.read(file, {options_.is_edit, options_.ignore_unknown}, &running);
    Report report;
    report.candidate = candidate.name();
    report.running = running.name();
    report.rule_names = rule_names();
    report.rules = rules_;
    report.unknown_data = candidate.unknown_data;
    if (options_.difference) {
        report.changes = difference(running.tree, candidate.tree);
    }
    report.instances = vrrp_instances(candidate.tree);
    report.removed_instances = count_removed(vrrp_instances(running.tree), report.instances);
    Progress progress;
    RuleWalk walk{model_, host_};
    walk.rule_names = {options_.rule_names.begin(), options_.rule_names.end()};
    walk.max_findings = options_.max_findings;
    walk.threads = threads;
    walk.stop = &is_interrupted();
    if (shows_progress) {
        walk.on_progress = [&progress](const Report& so_far) {
            progress.show(so_far.candidate + ": " + std::to_string(so_far.requests) +
                          " checks done");
        };
    }
    walk_candidate(walk, {candidate, running, key_}, report);
    if (report.instances.empty() && report.removed_instances > 0) {
        report.findings.push_back(removes_all(report, candidate.is_edit));
    }
    if (!report.findings.empty() || options_.difference) {
        report.sources = candidate.sources;
        for (const auto& source : running.sources) {  // some of them are an edit's as well
            if (std::count(report.sources.begin(), report.sources.end(), source) == 0) {
                report.sources.push_back(source);
            }
        }
    }
    report.seconds = std::chrono::duration<double>(Clock::now() - start).count();
    return report;
}
