#include "checking/checker.h"

#include <algorithm>
#include <chrono>

#include "checking/vrrp_instances.h"
#include "errors/cannot_check.h"
#include "errors/did_you_mean.h"
#include "files/key_file.h"
#include "terminal/progress.h"

using local_platform::DataTree;

namespace {

/// A selector that the model does not use would make a check that can only pass.
void require_known(const std::set<std::string>& wanted, const std::vector<std::string>& known) {
    for (const std::string& selector : wanted) {
        if (std::find(known.begin(), known.end(), selector) == known.end()) {
            throw CannotCheck("--rule: the model uses no rule \"" + selector + "\"" +
                              did_you_mean(selector, known) + "; run vrrp-valid rules");
        }
    }
}

}  // namespace

Checker::Checker(const CheckerOptions& options)
    : model_(options.yang_dir),
      host_(options.plugin_file),
      key_(options.key_file.empty() ? std::nullopt
                                    : std::optional(read_key_file(options.key_file))),
      selectors_(options.selectors.begin(), options.selectors.end()),
      difference_(options.difference),
      max_findings_(options.max_findings),
      threads_(options.threads),
      reading_{false, options.ignore_unknown} {
    require_known(selectors_, model_.selectors());
}

Running Checker::read_running(std::optional<ConfigurationFile> file) const {
    if (!file) {
        return {{}, DataTree(model_.schema())};
    }
    const Document document = model_.parse(std::move(*file), reading_);
    return {document.name(), model_.tree(document)};
}

std::vector<std::string> Checker::selectors() const {
    std::vector<std::string> selectors = model_.selectors();
    const auto is_left_out = [this](const std::string& selector) {
        return !selectors_.empty() && selectors_.count(selector) == 0;
    };
    selectors.erase(std::remove_if(selectors.begin(), selectors.end(), is_left_out),
                    selectors.end());
    return selectors;
}

Report Checker::check(ConfigurationFile candidate, const Running& running) const {
    using Clock = std::chrono::steady_clock;
    const auto start = Clock::now();
    Report report;
    report.candidate = candidate.name;
    report.running = running.name;
    report.selectors = selectors();
    const Document document = model_.parse(std::move(candidate), reading_);
    if (document.is_edit) {
        throw CannotCheck(document.name() + ": is an edit, and edits cannot be checked yet");
    }
    report.skipped = document.skipped;
    const Transaction transaction{model_.tree(document), running.tree, key_};
    Progress progress;
    const auto show = [&progress](const Report& so_far) {
        progress.show(so_far.candidate, so_far.requests);
    };
    if (difference_) {
        report.changes = difference(transaction.running, transaction.candidate);
    }
    report.instances = vrrp_instances(transaction.candidate);
    report.removed_instances = count_removed(vrrp_instances(running.tree), report.instances);
    walk_candidate({model_, host_, selectors_, show, max_findings_, threads_}, transaction, report);
    report.seconds = std::chrono::duration<double>(Clock::now() - start).count();
    return report;
}
