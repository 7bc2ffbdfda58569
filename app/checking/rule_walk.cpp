#include "checking/rule_walk.h"

#include <algorithm>

#include "call_hook.h"
#include "configuration/operator_path.h"
#include "errors/cannot_check.h"
#include "keypath.h"

using local_platform::Call;
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
    const RuleWalk& walk;
    const Transaction& transaction;
    local_platform::Instance instance;
    Report& report;
};

/// One request of it.
struct Request {
    const ValidationUse& use;
    const Node& node;
    confd_hkeypath_t& kp;
    std::string path;
};

local_platform::Verdict ask_plugin(const Check& check, const Request& request) {
    confd_value_t newval = request.node.value;
    return check.walk.host.validate(check.instance, request.use.selector, request.kp, newval);
}

/// Adds the leaf that `call` reads, when it reads one that is there.
void note_value(const Check& check, const Call& call, std::vector<ReadValue>& values) {
    const bool is_running = call.operation.substr(0, 4) == "cdb_";
    const auto& tree = is_running ? check.transaction.running : check.transaction.candidate;
    const Node* const node =
        call.socket < 0 || call.argument.empty() ? nullptr : tree.find(call.argument);
    if (node == nullptr || node->schema->kind != NodeKind::leaf) {
        return;
    }
    confd_hkeypath_t kp;
    local_platform::fill_keypath(*node, kp);
    ReadValue value{is_running ? "running" : "candidate",
                    local_platform::keypath_text(kp),
                    operator_path(*node),
                    node->text,
                    {}};
    const auto is_same = [&](const ReadValue& other) {
        return other.datastore == value.datastore && other.leaf == value.leaf;
    };
    if (std::none_of(values.begin(), values.end(), is_same)) {
        values.push_back(std::move(value));
    }
}

/// What the rule compared, learnt by asking again and watching: only for what it refuses, so that a
/// clean check costs nothing more.
std::vector<ReadValue> values_read(const Check& check, const Request& request) {
    std::vector<ReadValue> values;
    const local_platform::ScopedCallHook watch([&](const Call& call) {
        try {
            note_value(check, call, values);
        } catch (const local_platform::PlatformError&) {
            // A path that no tree can hold has no value to show.
        }
        return std::optional<local_platform::Answer>();
    });
    ask_plugin(check, request);
    return values;
}

bool is_wanted(const Check& check, const Request& request) {
    const auto& wanted = check.walk.selectors;
    if (!wanted.empty() && wanted.count(request.use.selector) == 0) {
        return false;
    }
    return !request.use.only_when_changed ||
           !same_subtree(&request.node, check.transaction.running.find(request.path));
}

void deliver(Check& check, const Request& request) {
    const std::string& served = check.walk.host.validation_point();
    if (request.use.point != served) {
        throw CannotCheck("the model uses the validation point \"" + request.use.point +
                          "\", the plug-in serves \"" + served +
                          "\": give the plug-in that belongs to the model with --plugin");
    }
    if (!is_wanted(check, request)) {
        return;
    }
    const auto verdict = ask_plugin(check, request);
    ++check.report.requests;
    if (verdict.result != CONFD_OK) {
        const bool is_warning = verdict.result == CONFD_VALIDATION_WARN;
        check.report.findings.push_back(
            {is_warning ? Severity::warning : Severity::error,
             request.use.selector,
             request.path,
             operator_path(request.node),
             verdict.messages.empty() ? "the rule refuses " + request.path + " without a message."
                                      : verdict.messages.back(),
             values_read(check, request),
             {},
             {},
             {}});
    }
    if (check.walk.on_request) {
        check.walk.on_request(check.report);
    }
}

void visit(Check& check, const Node& node) {
    const bool is_whole_list = node.schema->kind == NodeKind::list && !node.is_entry;
    const auto& uses = check.walk.model.uses(*node.schema);
    if (!is_whole_list && !uses.empty()) {
        confd_hkeypath_t kp;
        local_platform::fill_keypath(node, kp);
        for (const ValidationUse& use : uses) {
            deliver(check, {use, node, kp, local_platform::keypath_text(kp)});
        }
    }
    for (const auto& child : node.children) {
        if (child != nullptr) {
            visit(check, *child);
        }
    }
}

}  // namespace

void walk_candidate(const RuleWalk& walk, const Transaction& transaction, Report& report) {
    Check check{
        walk, transaction,
        local_platform::Instance(transaction.candidate, transaction.running, transaction.key),
        report};
    visit(check, transaction.candidate.root());
}
