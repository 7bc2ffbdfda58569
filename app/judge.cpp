#include "judge.h"

#include <algorithm>

#include "cannot_judge.h"

using local_platform::Node;
using local_platform::NodeKind;

namespace {

bool same_subtree(const Node* one, const Node* other) {
    if (one == nullptr || other == nullptr) {
        return one == other;
    }
    return one->text == other->text &&
           std::equal(one->children.begin(), one->children.end(), other->children.begin(),
                      other->children.end(),
                      [](const auto& a, const auto& b) { return same_subtree(a.get(), b.get()); });
}

/// One check under way.
struct Check {
    const YangModel& model;
    const local_platform::Host& host;
    const local_platform::DataTree& running;
    local_platform::Instance instance;
    Report& report;
};

std::string message_of(const local_platform::Verdict& verdict, const std::string& path) {
    return verdict.messages.empty() ? "the rule refuses " + path + " without a message."
                                    : verdict.messages.back();
}

void deliver(Check& check, const ValidationUse& use, const Node& node, confd_hkeypath_t& kp) {
    if (use.point != check.host.validation_point()) {
        throw CannotJudge("the model uses the validation point \"" + use.point +
                          "\", the plug-in serves \"" + check.host.validation_point() +
                          "\": give the plug-in that belongs to the model with --plugin");
    }
    const std::string path = local_platform::keypath_text(kp);
    if (use.only_when_changed && same_subtree(&node, check.running.find(path))) {
        return;
    }
    confd_value_t newval = node.value;
    const auto verdict = check.host.validate(check.instance, use.selector, kp, newval);
    ++check.report.requests;
    if (verdict.result == CONFD_OK) {
        return;
    }
    const bool is_warning = verdict.result == CONFD_VALIDATION_WARN;
    check.report.findings.push_back({is_warning ? Severity::warning : Severity::error, use.selector,
                                     path, message_of(verdict, path)});
}

void visit(Check& check, const Node& node) {
    const bool is_whole_list = node.schema->kind == NodeKind::list && !node.is_entry;
    const auto& uses = check.model.uses(*node.schema);
    if (!is_whole_list && !uses.empty()) {
        confd_hkeypath_t kp;
        local_platform::fill_keypath(node, kp);
        for (const ValidationUse& use : uses) {
            deliver(check, use, node, kp);
        }
    }
    for (const auto& child : node.children) {
        if (child != nullptr) {
            visit(check, *child);
        }
    }
}

}  // namespace

std::size_t Report::count(Severity severity) const {
    return static_cast<std::size_t>(
        std::count_if(findings.begin(), findings.end(),
                      [severity](const Finding& finding) { return finding.severity == severity; }));
}

void judge(const YangModel& model, const local_platform::Host& host, const Transaction& transaction,
           Report& report) {
    Check check{
        model, host, transaction.running,
        local_platform::Instance(transaction.candidate, transaction.running, transaction.key),
        report};
    visit(check, transaction.candidate.root());
}
