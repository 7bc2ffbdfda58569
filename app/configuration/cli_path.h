/// Nodes in the operator's words.
#pragma once

#include <string>

#include "data_tree.h"

/// The way to `node` as an operator types it: "router vrrp interface l3-vlan10 address-family
/// ipv4".
std::string cli_path(const local_platform::Node& node);

/// The keys of a list's entry, the same way.
std::string cli_keys(const local_platform::Node& entry);
