#include "checking/checker.h"

#include <algorithm>
#include <chrono>

#include "checking/locations.h"
#include "checking/masked_text.h"
#include "checking/missing_interfaces.h"
#include "checking/vrrp_instances.h"
#include "configuration/skipped_difference.h"
#include "errors/did_you_mean.h"
#include "errors/input_error.h"
#include "files/key_file.h"
#include "terminal/progress.h"

using local_platform::DataTree;

namespace {

/// A rule that the model does not use would make a check that can only pass.
void require_known(const std::set<std::string>& wanted, const std::vector<std::string>& known) {
    for (const std::string& rule : wanted) {
        if (std::find(known.begin(), known.end(), rule) == known.end()) {
            throw InputError("--rule: there is no rule \"" + rule + "\"" +
                             did_you_mean(rule, known) + "; run vrrp-valid rules");
        }
    }
}

void collect_rules(const YangModel& model, const local_platform::SchemaNode& node,
                   std::vector<Rule>& rules) {
    const auto& uses = model.uses(node);
    rules.insert(rules.end(), uses.begin(), uses.end());
    for (const auto& child : node.children) {
        collect_rules(model, child, rules);
    }
}

/// Adds what the files of `document` hold, those that are not there yet.
void add_sources(const Document& document, const local_platform::SchemaNode& schema,
                 Report& report) {
    for (const auto& source : document.sources()) {
        const std::string& name = source->file.name;
        const auto is_there = [&](const auto& other) { return other->name() == name; };
        if (std::none_of(report.sources.begin(), report.sources.end(), is_there)) {
            report.sources.push_back(
                std::make_shared<const SourceText>(name, masked_text(source->file.bytes, schema)));
        }
    }
}

}  // namespace

std::shared_ptr<const std::vector<Rule>> rules_of(const YangModel& model) {
    std::vector<Rule> rules;
    collect_rules(model, *model.schema(), rules);
    return std::make_shared<const std::vector<Rule>>(std::move(rules));
}

Checker::Checker(const CheckerOptions& options)
    : model_(options.yang_dir),
      rules_(rules_of(model_)),
      host_(options.plugin_file),
      key_(options.key_file.empty() ? std::nullopt
                                    : std::optional(read_key_file(options.key_file))),
      rule_names_(options.rule_names.begin(), options.rule_names.end()),
      difference_(options.difference),
      max_findings_(options.max_findings),
      threads_(options.threads),
      reading_{options.is_edit, options.ignore_unknown},
      times_rules_(options.times_rules) {
    require_known(rule_names_, model_.rule_names());
}

Running Checker::read_running(std::optional<ConfigurationFile> file) const {
    if (!file) {
        return {{}, DataTree(model_.schema()), std::nullopt};
    }
    Document document = model_.parse(std::move(*file), {false, reading_.ignore_unknown});
    if (document.is_edit) {
        throw InputError(document.name() +
                         ": is an edit; give a complete configuration as --running");
    }
    DataTree tree = model_.tree(document);
    return {document.name(), std::move(tree), std::move(document)};
}

Configuration Checker::read_candidate(ConfigurationFile file, const Running& running) const {
    return model_.candidate(std::move(file), reading_, running.document_or_null());
}

Report Checker::check(ConfigurationFile candidate, const Running& running,
                      const CheckEffort& effort) const {
    return check(read_candidate(std::move(candidate), running), running, effort);
}

std::vector<std::string> Checker::rule_names() const {
    std::vector<std::string> rule_names = model_.rule_names();
    const auto is_left_out = [this](const std::string& rule) {
        return !rule_names_.empty() && rule_names_.count(rule) == 0;
    };
    rule_names.erase(std::remove_if(rule_names.begin(), rule_names.end(), is_left_out),
                     rule_names.end());
    return rule_names;
}

Report Checker::check(const Configuration& candidate, const Running& running,
                      const CheckEffort& effort) const {
    using Clock = std::chrono::steady_clock;
    const auto start = Clock::now();
    Report report;
    report.candidate = candidate.document.name();
    report.running = running.name;
    report.rule_names = rule_names();
    report.rules = rules_;
    report.unknown_data = candidate.document.unknown_data;
    const Transaction transaction{candidate.tree, running.tree, key_};
    Progress progress;
    const auto show = [&progress](const Report& so_far) {
        progress.show(so_far.candidate + ": " + std::to_string(so_far.requests) + " checks done");
    };
    if (difference_) {
        report.changes = difference(transaction.running, transaction.candidate);
        add_skipped_changes(running.document ? &*running.document : nullptr, candidate.document,
                            *report.changes);
    }
    report.instances = vrrp_instances(transaction.candidate);
    report.removed_instances = count_removed(vrrp_instances(running.tree), report.instances);
    RuleWalk walk{model_,        host_,    rule_names_, nullptr,
                  max_findings_, threads_, effort.stop, times_rules_};
    if (effort.shows_progress) {
        walk.on_progress = show;
    }
    if (effort.threads > 0) {
        walk.threads = effort.threads;
    }
    walk_candidate(walk, transaction, report);
    find_missing_interfaces(transaction.candidate, report);
    if (!report.findings.empty()) {
        const Document* const committed = running.document_or_null();
        locate(report, candidate.document, committed);
        add_sources(candidate.document, *model_.schema(), report);
        if (committed != nullptr) {
            add_sources(*committed, *model_.schema(), report);
        }
    }
    report.seconds = std::chrono::duration<double>(Clock::now() - start).count();
    return report;
}
