#include "path_lookup.h"

#include <algorithm>

#include "tree_store.h"

namespace local_platform {
namespace {

constexpr const char* kMalformed = "malformed path";
constexpr const char* kUnknown = "no such node in the model";
constexpr const char* kKeyCount = "wrong number of keys";
constexpr const char* kKeyValue = "a key is no value of its type";

/// The entry that `step` names; absent in an absent list. A key text that is not canonical is
/// looked up a second time in its canonical form, so that the usual one costs no conversion.
Lookup look_up_entry(const EntryIndex& index, const Node* list, const SchemaNode& schema,
                     const PathStep& step) {
    Lookup found;
    found.schema = &schema;
    if (step.key_count != schema.keys.size()) {
        found.error = kKeyCount;
        return found;
    }
    if (list != nullptr && step.key_count == 1) {
        found.node = index.find(*list, step.keys[0]);
        if (found.node != nullptr) {
            return found;
        }
    }
    CanonicalKeys keys;
    if (!keys.read(schema, step)) {
        found.error = kKeyValue;
    } else if (list != nullptr) {
        found.node = index.find(*list, keys.text);
    }
    return found;
}

/// The child of `from` that `step` names.
Lookup look_up_step(const EntryIndex& index, const Lookup& from, const PathStep& step) {
    Lookup found;
    const int child = from.names_list ? -1 : from.schema->child_index(step.name);
    if (child < 0) {
        found.error = kUnknown;
        return found;
    }
    const auto position = static_cast<std::size_t>(child);
    found.schema = &from.schema->children[position];
    found.node = from.node == nullptr ? nullptr : from.node->children[position];
    if (found.schema->kind == NodeKind::list) {
        if (step.has_keys) {
            return look_up_entry(index, found.node, *found.schema, step);
        }
        found.names_list = true;
    } else if (step.has_keys) {
        found.error = kKeyCount;
    }
    return found;
}

Lookup follow(const EntryIndex& index, Lookup found, std::string_view path) {
    PathReader reader(path);
    PathStep step;
    for (;;) {
        const PathReader::Result result = reader.next(step);
        if (result == PathReader::Result::end) {
            return found;
        }
        if (result == PathReader::Result::malformed) {
            found.error = kMalformed;
            return found;
        }
        found = look_up_step(index, found, step);
        if (found.error != nullptr) {
            return found;
        }
    }
}

/// Whether `tail` leads from an entry of a list at or below `node` to an entry of a list below it
/// that has a child of the same name.
bool leads_to_like_entry(const SchemaNode& node, std::string_view tail) {
    if (node.kind == NodeKind::list) {
        Lookup entry;
        entry.schema = &node;
        const Lookup found = follow(EntryIndex(), entry, tail);
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
    Lookup found;
    found.node = store.root;
    found.schema = store.schema.get();
    return follow(store.index, found, path);
}

bool imitates_path(const SchemaNode& model, std::string_view key) {
    if (key.find("}/") == std::string_view::npos) {
        return false;
    }
    const std::string closed = std::string(key) + "}";
    for (std::size_t at = 0; (at = closed.find("}/", at)) != std::string::npos; ++at) {
        if (leads_to_like_entry(model, std::string_view(closed).substr(at + 1))) {
            return true;
        }
    }
    return false;
}

bool CanonicalKeys::read(const SchemaNode& list, const PathStep& step) {
    for (std::size_t i = 0; i < list.keys.size(); ++i) {
        const int leaf = list.child_index(list.keys[i]);
        if (leaf < 0 ||
            !values[i].read(list.children[static_cast<std::size_t>(leaf)], step.keys[i])) {
            return false;
        }
        if (i > 0) {
            text += '\0';
        }
        text += values[i].text();
    }
    return true;
}

}  // namespace local_platform
