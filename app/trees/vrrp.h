/// What the command knows about VRRP beyond what the model says of its rules.
#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "data_tree.h"

/// A VRRP instance by its keys.
struct VrrpInstance {
    std::string interface;
    std::string family;
    std::string id;

    friend bool operator==(const VrrpInstance& one, const VrrpInstance& other) {
        return one.interface == other.interface && one.family == other.family && one.id == other.id;
    }
};

/// The instances of a configuration, in its order; none when its model has no VRRP.
std::vector<VrrpInstance> vrrp_instances(const local_platform::DataTree& configuration);

/// How many of `running` are not in `candidate`.
std::size_t count_removed(const std::vector<VrrpInstance>& running,
                          const std::vector<VrrpInstance>& candidate);

/// The instance that `node` is, or is below of; nothing for any other node.
std::optional<VrrpInstance> instance_around(const local_platform::Node& node);

/// Whether a rule that reads `path` looks through all instances.
bool reads_instance_table(std::string_view path);

/// The first instance of another interface with the family and identifier of `instance`; null
/// without one.
const local_platform::Node* conflicting_instance(const local_platform::DataTree& configuration,
                                                 const VrrpInstance& instance);

/// Whether `path` leads to the layer-3 interface that `instance` runs on, or below it.
bool reads_layer3_interface(std::string_view path, const VrrpInstance& instance);

/// That `configuration` lacks the layer-3 interface that `instance` runs on, with the name nearest
/// to it; empty when it is there.
std::string missing_interface(const local_platform::DataTree& configuration,
                              const VrrpInstance& instance);
