#include "configuration/configuration.h"

using local_platform::Node;

namespace {

/// The mark of the name that an editor is led to.
std::uintptr_t mark_of_name(const Node& node) {
    if (!node.is_entry()) {
        return node.mark;
    }
    const int first_key = node.schema->child_index(node.schema->keys.front());
    return node.children[static_cast<std::size_t>(first_key)]->mark;
}

}  // namespace

Location Configuration::location_of(const Node& node) const {
    for (const Node* step = &node; step != nullptr; step = step->parent) {
        if (const std::uintptr_t mark = mark_of_name(*step); mark != 0) {
            return ::location_of(sources, origin_of(mark));
        }
    }
    return {name(), 0, 0};
}
