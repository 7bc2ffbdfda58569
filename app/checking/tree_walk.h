/// Steps down a tree whose model may lack what is looked for.
#pragma once

#include <string_view>

#include "data_tree.h"

/// The child of `node`, which may be null; null when it is absent, or in no model.
inline const local_platform::Node* child(const local_platform::Node* node, std::string_view name) {
    const int index = node == nullptr ? -1 : node->schema->child_index(name);
    return index < 0 ? nullptr : node->children[static_cast<std::size_t>(index)];
}

/// The entries of the list below `node`; none when it is absent.
inline local_platform::Span<const local_platform::Node*> entries(const local_platform::Node* node,
                                                                 std::string_view list) {
    const local_platform::Node* const found = child(node, list);
    return found == nullptr ? local_platform::Span<const local_platform::Node*>() : found->children;
}
