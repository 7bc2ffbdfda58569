/// Nodes in the operator's words, and as paths.
#pragma once

#include <string>

#include "data_tree.h"

/// The way to `node` as an operator types it: "router vrrp interface l3-vlan10 address-family
/// ipv4".
std::string cli_path(const local_platform::Node& node);

/// The keys of a list's entry, the same way.
std::string cli_keys(const local_platform::Node& entry);

/// The path of `node` as keypath printing gives it.
std::string keypath_of(const local_platform::Node& node);
