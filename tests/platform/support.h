/// A model like a router's, in the platform's own terms, and trees of it.
#pragma once

#include <gtest/gtest.h>

#include <memory>
#include <string>
#include <vector>

#include "data_tree.h"
#include "schema_node.h"

using Model = std::shared_ptr<const local_platform::SchemaNode>;
using Strings = std::vector<std::string>;

local_platform::SchemaNode leaf(const char* name, confd_vtype type);
local_platform::SchemaNode container(const char* name,
                                     std::vector<local_platform::SchemaNode> children);
/// The keys are leafs of type string, added to `children`, unless they are there already.
local_platform::SchemaNode list(const char* name, Strings keys,
                                std::vector<local_platform::SchemaNode> children);

/// Layer-3 interfaces below /config/interface, VRRP instances below /router/vrrp.
Model router_model();

struct Setting {
    std::string path;
    std::string value = {};  ///< a leaf's
};

local_platform::DataTree tree_of(const Model& model, const std::vector<Setting>& settings);
