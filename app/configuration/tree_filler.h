/// From libyang's tree to the one that rules read.
#pragma once

#include "configuration/data_builder.h"
#include "data_tree.h"

/// The tree of all in `data` that the platform's has, each node with its mark. Frees the entries of
/// `data` as they are added: the two trees of a large configuration would take twice the memory.
/// Throws PlatformError.
local_platform::DataTree fill_tree(DataForest data,
                                   std::shared_ptr<const local_platform::SchemaNode> schema);
