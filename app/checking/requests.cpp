#include "checking/requests.h"

#include <algorithm>
#include <functional>

#include "call_hook.h"
#include "errors/input_error.h"
#include "keypath.h"
#include "trees/cli_path.h"

using local_platform::DataTree;
using local_platform::Host;
using local_platform::Node;
using local_platform::NodeKind;
using local_platform::Response;

namespace {

bool same_subtree(const Node* one, const Node* other) {
    if (one == nullptr || other == nullptr) {
        return one == other;
    }
    return one->text == other->text &&
           std::equal(one->children.begin(), one->children.end(), other->children.begin(),
                      other->children.end(), same_subtree);
}

void require_served(const Rule& rule, const std::string& served) {
    if (rule.point != served) {
        throw InputError("the model uses the validation point \"" + rule.point +
                         "\", the plug-in serves \"" + served +
                         "\": the plug-in and the model do not belong together");
    }
}

}  // namespace

std::vector<Request> requests_of(const RulesByNode& rules, const Host& host,
                                 const DataTree& candidate, const DataTree& running,
                                 const std::set<std::string>& rule_names) {
    std::vector<Request> requests;
    const auto is_wanted = [&](const Rule& rule, const Node& node) {
        if (!rule_names.empty() && rule_names.count(rule.name) == 0) {
            return false;
        }
        return !rule.only_when_changed || !same_subtree(&node, running.find(keypath_of(node)));
    };
    const std::function<void(const Node&)> visit = [&](const Node& node) {
        const bool is_whole_list = node.schema->kind == NodeKind::list && !node.is_entry();
        const auto bound = is_whole_list ? rules.end() : rules.find(node.schema);
        if (bound != rules.end()) {
            for (const Rule& rule : bound->second) {
                require_served(rule, host.validation_point());
                if (is_wanted(rule, node)) {
                    requests.push_back({&rule, &node});
                }
            }
        }
        for (const Node* const child : node.children) {
            if (child != nullptr) {
                visit(*child);
            }
        }
    };
    visit(candidate.root());
    return requests;
}

Response ask(const Host& host, const local_platform::Instance& instance, const Request& request) {
    confd_hkeypath_t kp;
    local_platform::fill_keypath(*request.node, kp);
    confd_value_t newval = request.node->value();
    local_platform::take_model_misfit();
    Response response = host.validate(instance, request.rule->name, kp, newval);
    const std::string misfit = local_platform::take_model_misfit();
    // A name that cannot be written in a path is another matter.
    if (!misfit.empty() && keypath_of(*request.node).find('[') == std::string::npos) {
        throw InputError("the rule " + request.rule->name + " cannot work on this model: " +
                         misfit + "; give the model that belongs to the plug-in");
    }
    return response;
}

std::string message_of(const Response& response, const Node& node) {
    return response.messages.empty()
               ? "the rule refuses " + keypath_of(node) + " without a message."
               : response.messages.back();
}
