/// The model in yang/, written by hand, so that the rules are tested without a YANG library.
#pragma once

#include "platform/support.h"

/// All of it, below the root.
local_platform::SchemaNode vrrp_model();
