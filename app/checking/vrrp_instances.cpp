#include "checking/vrrp_instances.h"

#include <algorithm>
#include <set>
#include <tuple>

#include "checking/tree_walk.h"

using local_platform::Node;

std::vector<VrrpInstance> vrrp_instances(const local_platform::DataTree& configuration) {
    std::vector<VrrpInstance> instances;
    const Node* const vrrp = child(child(&configuration.root(), "router"), "vrrp");
    for (const auto& interface : entries(vrrp, "interface")) {
        for (const auto& family : entries(interface, "address-family")) {
            for (const auto& id : entries(family, "vr-id")) {
                instances.push_back({std::string(interface->text), std::string(family->text),
                                     std::string(id->text)});
            }
        }
    }
    return instances;
}

std::optional<VrrpInstance> instance_around(const Node& node) {
    constexpr std::string_view kLists[] = {"vr-id", "address-family", "interface"};
    std::vector<std::string> keys;
    for (const Node* at = &node; at != nullptr && keys.size() < 3; at = at->parent) {
        if (at->is_entry() && at->schema->name == kLists[keys.size()]) {
            keys.emplace_back(at->text);
        }
    }
    return keys.size() < 3 ? std::nullopt : std::optional(VrrpInstance{keys[2], keys[1], keys[0]});
}

std::size_t count_removed(const std::vector<VrrpInstance>& running,
                          const std::vector<VrrpInstance>& candidate) {
    using Keys = std::tuple<std::string_view, std::string_view, std::string_view>;
    const auto keys = [](const VrrpInstance& instance) {
        return Keys(instance.interface, instance.family, instance.id);
    };
    std::set<Keys> kept;
    for (const VrrpInstance& instance : candidate) {
        kept.insert(keys(instance));
    }
    return static_cast<std::size_t>(std::count_if(
        running.begin(), running.end(),
        [&](const VrrpInstance& instance) { return kept.count(keys(instance)) == 0; }));
}
