#include "entry_keys.h"

#include "value_text.h"

namespace local_platform {

std::size_t key_position(const SchemaNode& list, std::size_t index) {
    return static_cast<std::size_t>(list.child_index(list.keys[index]));
}

std::optional<std::vector<std::string>> canonical_keys(const SchemaNode& list,
                                                       std::vector<std::string> keys) {
    if (keys.size() != list.keys.size()) {
        return std::nullopt;
    }
    for (std::size_t i = 0; i < keys.size(); ++i) {
        const auto text = canonical_text(list.children[key_position(list, i)], keys[i]);
        if (!text) {
            return std::nullopt;
        }
        keys[i] = *text;
    }
    return keys;
}

std::string joined(const std::vector<std::string>& keys) {
    std::string text = keys.front();
    for (std::size_t i = 1; i < keys.size(); ++i) {
        text.append(1, '\0').append(keys[i]);
    }
    return text;
}

int read_keys(const Node& entry, confd_value_t* values) {
    const std::size_t count = entry.schema->keys.size();
    for (std::size_t i = 0; i < count; ++i) {
        values[i] = entry.children[key_position(*entry.schema, i)]->value();
    }
    return static_cast<int>(count);
}

}  // namespace local_platform
