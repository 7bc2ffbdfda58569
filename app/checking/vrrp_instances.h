/// The VRRP instances that a configuration holds.
#pragma once

#include <vector>

#include "checking/report.h"
#include "data_tree.h"

/// In the order of the configuration; none when its model has no VRRP.
std::vector<VrrpInstance> vrrp_instances(const local_platform::DataTree& configuration);

/// The instance that `node` is, or is below of; nothing for any other node.
std::optional<VrrpInstance> instance_around(const local_platform::Node& node);

/// How many of `running` are not in `candidate`.
std::size_t count_removed(const std::vector<VrrpInstance>& running,
                          const std::vector<VrrpInstance>& candidate);
