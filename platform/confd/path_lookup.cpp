#include "path_lookup.h"

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

}  // namespace

Lookup look_up(const Node& root, std::string_view path) {
    PathReader reader(path);
    PathStep step;
    Lookup found;
    found.node = &root;
    found.schema = root.schema;
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
