#include "trees/vrrp.h"

#include <algorithm>
#include <array>
#include <set>
#include <tuple>

#include "errors/did_you_mean.h"

using local_platform::DataTree;
using local_platform::Node;
using Nodes = local_platform::Span<const Node*>;

namespace {

constexpr std::string_view kInstanceTable = "router/vrrp/interface";
constexpr std::string_view kLayer3Interfaces = "/config/interface/l3{";

/// The lists that an instance is in, the outermost first.
constexpr std::array<std::string_view, 3> kLists = {"interface", "address-family", "vr-id"};

/// The child of `node`, which may be null; null when it is absent, or in no model.
const Node* child(const Node* node, std::string_view name) {
    const int index = node == nullptr ? -1 : node->schema->child_index(name);
    return index < 0 ? nullptr : node->children[static_cast<std::size_t>(index)];
}

Nodes entries(const Node* node, std::string_view list) {
    const Node* const found = child(node, list);
    return found == nullptr ? Nodes() : found->children;
}

const Node* vrrp(const DataTree& configuration) {
    return child(child(&configuration.root(), "router"), "vrrp");
}

Nodes layer3_interfaces(const DataTree& configuration) {
    return entries(child(child(&configuration.root(), "config"), "interface"), "l3");
}

/// The layer-3 interface that a VRRP interface runs on.
std::string_view layer3_name(const VrrpInstance& instance) {
    const std::string_view key = instance.interface;
    return key.substr(key.find('-') + 1);
}

template <typename Visit>
void for_each_instance(const DataTree& configuration, Visit visit) {
    for (const Node* const interface : entries(vrrp(configuration), kLists[0])) {
        for (const Node* const family : entries(interface, kLists[1])) {
            for (const Node* const id : entries(family, kLists[2])) {
                visit(*id);
            }
        }
    }
}

/// The instance whose entry of the innermost list is `entry`.
VrrpInstance instance_of(const Node& entry) {
    const Node& family = *entry.parent->parent;
    return {std::string(family.parent->parent->text), std::string(family.text),
            std::string(entry.text)};
}

/// Whether `entry` is one of the innermost list of instances.
bool is_instance(const Node& entry) {
    const Node* step = &entry;
    for (std::size_t i = kLists.size(); i > 0; --i) {
        if (step == nullptr || !step->is_entry() || step->schema->name != kLists[i - 1]) {
            return false;
        }
        step = step->parent->parent;
    }
    return step != nullptr && step->schema->name == "vrrp";
}

}  // namespace

std::vector<VrrpInstance> vrrp_instances(const DataTree& configuration) {
    std::vector<VrrpInstance> instances;
    for_each_instance(configuration,
                      [&](const Node& entry) { instances.push_back(instance_of(entry)); });
    return instances;
}

std::size_t count_removed(const std::vector<VrrpInstance>& running,
                          const std::vector<VrrpInstance>& candidate) {
    const auto keys = [](const VrrpInstance& instance) {
        return std::tie(instance.interface, instance.family, instance.id);
    };
    std::set<decltype(keys(running.front()))> kept;
    for (const VrrpInstance& instance : candidate) {
        kept.insert(keys(instance));
    }
    return static_cast<std::size_t>(std::count_if(
        running.begin(), running.end(),
        [&](const VrrpInstance& instance) { return kept.count(keys(instance)) == 0; }));
}

std::optional<VrrpInstance> instance_around(const Node& node) {
    for (const Node* step = &node; step != nullptr; step = step->parent) {
        if (is_instance(*step)) {
            return instance_of(*step);
        }
    }
    return std::nullopt;
}

bool reads_instance_table(std::string_view path) {
    return path == kInstanceTable;
}

const Node* conflicting_instance(const DataTree& configuration, const VrrpInstance& instance) {
    const Node* found = nullptr;
    for_each_instance(configuration, [&](const Node& entry) {
        if (found != nullptr || entry.text != instance.id) {
            return;
        }
        const VrrpInstance other = instance_of(entry);
        found = other.family == instance.family && other.interface != instance.interface ? &entry
                                                                                         : nullptr;
    });
    return found;
}

bool reads_layer3_interface(std::string_view path, const VrrpInstance& instance) {
    const std::string_view name = layer3_name(instance);
    return path.substr(0, kLayer3Interfaces.size()) == kLayer3Interfaces &&
           path.substr(kLayer3Interfaces.size(), name.size()) == name &&
           path.substr(kLayer3Interfaces.size() + name.size(), 1) == "}";
}

std::string missing_interface(const DataTree& configuration, const VrrpInstance& instance) {
    const std::string name(layer3_name(instance));
    std::vector<std::string> present;
    for (const Node* const interface : layer3_interfaces(configuration)) {
        if (interface->text == name) {
            return {};
        }
        present.emplace_back(interface->text);
    }
    const std::string nearest = nearest_name(name, present);
    return "layer-3 interface " + name + " is not in the candidate" +
           (nearest.empty() ? "" : "; the nearest name there is " + nearest);
}
