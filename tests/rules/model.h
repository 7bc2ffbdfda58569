/// The model in yang/, written by hand, so that the rules are tested without a YANG library.
#pragma once

#include "platform/support.h"

/// The list of VRRP instances, with the identifier of an instance as `id` and `others` below it.
local_platform::SchemaNode vrrp_interfaces(
    confd_vtype id, const std::vector<local_platform::SchemaNode>& others = {});

/// All of it, below the root.
local_platform::SchemaNode vrrp_model();
