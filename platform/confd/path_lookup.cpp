#include "path_lookup.h"

#include <algorithm>

#include "entry_keys.h"
#include "path_reader.h"
#include "tree_store.h"

namespace local_platform {
namespace {

Lookup failed(const char* error) {
    Lookup lookup;
    lookup.error = error;
    return lookup;
}

/// The entry of `list` that has these keys; absent in an absent list.
Lookup look_up_entry(const EntryIndex& index, const Lookup& list,
                     const std::vector<std::string>& keys) {
    if (list.schema->kind != NodeKind::list || keys.size() != list.schema->keys.size()) {
        return failed("wrong number of keys");
    }
    const auto canonical = canonical_keys(*list.schema, keys);
    if (!canonical) {
        return failed("a key is no value of its type");
    }
    const Node* const entry =
        list.node == nullptr ? nullptr : find_entry(index, *list.node, joined(*canonical));
    return {entry, list.schema};
}

/// The child of `from` that `step` names.
Lookup look_up_step(const EntryIndex& index, const Lookup& from, const PathStep& step) {
    const int child = from.names_list ? -1 : from.schema->child_index(step.name);
    if (child < 0) {
        return failed("no such node in the model");
    }
    const auto position = static_cast<std::size_t>(child);
    Lookup found;
    found.schema = &from.schema->children[position];
    found.node = from.node == nullptr ? nullptr : from.node->children[position];
    found.names_list = found.schema->kind == NodeKind::list;
    return step.keys.empty() ? found : look_up_entry(index, found, step.keys);
}

Lookup follow(const EntryIndex& index, Lookup found, std::string_view path) {
    PathReader reader(path);
    PathStep step;
    while (found.error == nullptr && reader.next(step)) {
        found = look_up_step(index, found, step);
    }
    return reader.is_malformed() ? failed(kMalformedPath) : found;
}

/// Whether `tail` leads from an entry of a list at or below `node` to an entry of a list below it
/// that has a child of the same name.
bool leads_to_like_entry(const SchemaNode& node, std::string_view tail) {
    if (node.kind == NodeKind::list) {
        const Lookup found = follow(EntryIndex(), {nullptr, &node}, tail);
        if (found.error == nullptr && found.schema->kind == NodeKind::list &&
            std::any_of(node.children.begin(), node.children.end(), [&](const auto& child) {
                return found.schema->child_index(child.name) >= 0;
            })) {
            return true;
        }
    }
    return std::any_of(node.children.begin(), node.children.end(),
                       [&](const auto& child) { return leads_to_like_entry(child, tail); });
}

}  // namespace

Lookup look_up(const TreeStore& store, std::string_view path) {
    return follow(store.index, {store.root, store.schema.get()}, path);
}

bool imitates_path(const SchemaNode& model, std::string_view key) {
    const std::string closed = std::string(key) + "}";
    for (std::size_t at = 0; (at = closed.find("}/", at)) != std::string::npos; ++at) {
        if (leads_to_like_entry(model, std::string_view(closed).substr(at + 1))) {
            return true;
        }
    }
    return false;
}

}  // namespace local_platform
