#include "checking/missing_interfaces.h"

#include <map>
#include <set>

#include "checking/tree_walk.h"
#include "errors/did_you_mean.h"

using local_platform::DataTree;
using local_platform::Node;

namespace {

std::vector<std::string> layer3_interfaces(const DataTree& candidate) {
    std::vector<std::string> names;
    const Node* const interface = child(child(&candidate.root(), "config"), "interface");
    for (const auto& entry : entries(interface, "l3")) {
        names.emplace_back(entry->text);
    }
    return names;
}

/// The layer-3 interface that a VRRP interface runs on.
std::string layer3_name(const std::string& vrrp_interface) {
    return vrrp_interface.substr(vrrp_interface.find('-') + 1);
}

/// Of every layer-3 interface that an instance runs on and that is not there, by its name.
std::map<std::string, std::string> causes_by_name(const DataTree& candidate,
                                                  const std::vector<VrrpInstance>& instances) {
    const std::vector<std::string> present = layer3_interfaces(candidate);
    const std::set<std::string> names(present.begin(), present.end());
    std::map<std::string, std::string> causes;
    for (const VrrpInstance& instance : instances) {
        const std::string name = layer3_name(instance.interface);
        if (names.count(name) > 0 || causes.count(name) > 0) {
            continue;
        }
        const std::string nearest = nearest_name(name, present);
        causes[name] = "layer-3 interface " + name + " is not in the candidate" +
                       (nearest.empty() ? "" : "; the nearest name there is " + nearest);
    }
    return causes;
}

/// Whether `message` names the layer-3 interface `name`, and no longer name.
bool names_interface(const std::string& message, const std::string& name) {
    const std::string words = "interface l3 " + name;
    const std::size_t found = message.find(words);
    const std::size_t end = found + words.size();
    return found != std::string::npos &&
           (message.compare(end, 1, ".") == 0 || message.compare(end, 6, " with ") == 0);
}

}  // namespace

void find_missing_interfaces(const DataTree& candidate, Report& report) {
    if (report.findings.empty()) {
        return;
    }
    const auto causes = causes_by_name(candidate, report.instances);
    for (Finding& finding : report.findings) {
        for (const auto& [name, cause] : causes) {
            if (names_interface(finding.message, name)) {
                finding.cause = cause;
            }
        }
    }
}
