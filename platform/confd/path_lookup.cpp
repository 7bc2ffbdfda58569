#include "path_lookup.h"

#include <algorithm>

#include "value_text.h"

namespace local_platform {
namespace {

constexpr const char* kMalformed = "malformed path";
constexpr const char* kUnknown = "no such node in the model";
constexpr const char* kKeyCount = "wrong number of keys";
constexpr const char* kKeyValue = "a key is no value of its type";

const Node* find_in_index(const Node& list, std::string_view index_key) {
    const auto found = list.index.find(index_key);
    return found == list.index.end() ? nullptr : found->second;
}

/// The entry that `step` names; absent in an absent list. A key text that is not canonical is
/// looked up a second time in its canonical form, so that the usual one costs no conversion.
Lookup look_up_entry(const Node* list, const SchemaNode& schema, const PathStep& step) {
    Lookup found;
    found.schema = &schema;
    if (step.key_count != schema.keys.size()) {
        found.error = kKeyCount;
        return found;
    }
    if (list != nullptr && step.key_count == 1) {
        found.node = find_in_index(*list, step.keys[0]);
        if (found.node != nullptr) {
            return found;
        }
    }
    std::string index_key;
    if (!canonical_index_key(schema, step, index_key)) {
        found.error = kKeyValue;
    } else if (list != nullptr) {
        found.node = find_in_index(*list, index_key);
    }
    return found;
}

/// The child of `from` that `step` names.
Lookup look_up_step(const Lookup& from, const PathStep& step) {
    Lookup found;
    const int index = from.names_list ? -1 : from.schema->child_index(step.name);
    if (index < 0) {
        found.error = kUnknown;
        return found;
    }
    const auto position = static_cast<std::size_t>(index);
    found.schema = &from.schema->children[position];
    found.node = from.node == nullptr ? nullptr : from.node->children[position].get();
    if (found.schema->kind == NodeKind::list) {
        if (step.has_keys) {
            return look_up_entry(found.node, *found.schema, step);
        }
        found.names_list = true;
    } else if (step.has_keys) {
        found.error = kKeyCount;
    }
    return found;
}

Lookup follow(Lookup found, std::string_view path) {
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
        found = look_up_step(found, step);
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
        const Lookup found = follow(entry, tail);
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

Lookup look_up(const Node& root, std::string_view path) {
    Lookup found;
    found.node = &root;
    found.schema = root.schema;
    return follow(found, path);
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

bool canonical_index_key(const SchemaNode& list, const PathStep& step, std::string& index_key) {
    std::string canonical;
    for (std::size_t i = 0; i < list.keys.size(); ++i) {
        const int leaf = list.child_index(list.keys[i]);
        if (leaf < 0 || !canonical_text(list.children[static_cast<std::size_t>(leaf)], step.keys[i],
                                        canonical)) {
            return false;
        }
        if (i > 0) {
            index_key += '\0';
        }
        index_key += canonical;
    }
    return true;
}

}  // namespace local_platform
