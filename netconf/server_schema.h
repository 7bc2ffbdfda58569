/// The model and the data of netconfd as the platform has them.
#pragma once

#include <memory>
#include <unordered_map>

#include "configuration/yang_schema.h"
#include "data_tree.h"

struct obj_template_t_;
struct val_value_t_;

/// What the server's modules describe, and the uses of validation points in them.
struct ServerSchema {
    std::shared_ptr<const local_platform::SchemaNode> root;
    std::unordered_map<const obj_template_t_*, const local_platform::SchemaNode*> nodes;
    RulesByNode rules;
};

/// That of the modules that are loaded now. Throws PlatformError.
ServerSchema read_schema();

/// A datastore as a tree, and which of the server's values is behind each of its nodes.
struct ServerData {
    local_platform::DataTree tree;
    std::unordered_map<const local_platform::Node*, const val_value_t_*> values;
};

/// The datastore `root`. Throws PlatformError.
ServerData read_data(const ServerSchema& schema, const val_value_t_& root);
