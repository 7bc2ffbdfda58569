#include "configuration/operator_path.h"

#include <algorithm>

using local_platform::Node;

std::string operator_path(const Node& node) {
    if (node.parent == nullptr) {
        return {};
    }
    // An entry brings its list's name along.
    const Node& above = node.is_entry() ? *node.parent->parent : *node.parent;
    std::string words = operator_path(above);
    if (!words.empty()) {
        words += ' ';
    }
    words += node.schema->name;
    if (node.is_entry()) {
        words.append(" ").append(operator_keys(node));
    }
    return words;
}

std::string operator_keys(const Node& entry) {
    std::string keys(entry.text);
    std::replace(keys.begin(), keys.end(), '\0', ' ');
    return keys;
}
