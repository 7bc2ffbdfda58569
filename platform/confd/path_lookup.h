/// Finds the node of a tree that a path names.
#pragma once

#include <string_view>

#include "data_tree.h"

namespace local_platform {

/// The error of a path that no model could answer.
inline constexpr const char* kMalformedPath = "malformed path";

/// What a path names: `error` for one that is malformed or names no node of the model, else
/// `schema`, and `node` unless it is absent.
struct Lookup {
    const Node* node = nullptr;
    const SchemaNode* schema = nullptr;
    bool names_list = false;      ///< the list as a whole, not one of its entries
    const char* error = nullptr;  ///< static text
};

/// One pass over `path`; the time does not depend on the size of the tree.
Lookup look_up(const TreeStore& store, std::string_view path);

/// Whether `key` closes the brace that a path puts before it and goes on, by the model, to an entry
/// of another list ("x}/sub{z"), with nodes below it that its own list has too. No tree may hold
/// such a key: text put behind it would name another entry's node.
bool imitates_path(const SchemaNode& model, std::string_view key);

}  // namespace local_platform
