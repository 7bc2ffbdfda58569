#include "trees/cli_path.h"

#include <algorithm>

#include "keypath.h"

using local_platform::Node;

std::string cli_path(const Node& node) {
    if (node.parent == nullptr) {
        return {};
    }
    // An entry brings its list's name along.
    const Node& above = node.is_entry() ? *node.parent->parent : *node.parent;
    std::string words = cli_path(above);
    if (!words.empty()) {
        words += ' ';
    }
    words += node.schema->name;
    if (node.is_entry()) {
        words.append(" ").append(cli_keys(node));
    }
    return words;
}

std::string cli_keys(const Node& entry) {
    std::string keys(entry.text);
    std::replace(keys.begin(), keys.end(), '\0', ' ');
    return keys;
}

std::string keypath_of(const Node& node) {
    confd_hkeypath_t kp;
    local_platform::fill_keypath(node, kp);
    return local_platform::keypath_text(kp);
}
