#include "configuration/document.h"

#include <arpa/inet.h>
#include <libyang/libyang.h>

#include <algorithm>
#include <array>
#include <optional>

#include "configuration/leaf_value.h"

namespace {

/// One step of a path: "interface{l3-vlan10}", "m:interface[name='l3-vlan10']", "ll[.='a']".
struct Step {
    std::string_view module;  ///< empty for any
    std::string_view name;
    std::vector<std::string> keys;  ///< an entry's, or a leaf-list's value
    /// Of which leaf each key is; empty when the keys are in the model's order.
    std::vector<std::string_view> key_names;
};

/// Reads a keypath or one of libyang's data paths, step by step.
class PathText {
  public:
    explicit PathText(std::string_view path) : rest_(path) {}

    std::optional<Step> next() {
        if (rest_.empty() || rest_[0] != '/') {
            return std::nullopt;
        }
        rest_.remove_prefix(1);
        Step step;
        step.name = take(rest_.find_first_of("/{["));
        const std::size_t colon = step.name.find(':');
        if (colon != std::string_view::npos) {
            step.module = step.name.substr(0, colon);
            step.name.remove_prefix(colon + 1);
        }
        if (!rest_.empty() && rest_[0] == '{') {
            read_bare_keys(step);
        }
        while (!rest_.empty() && rest_[0] == '[') {
            read_quoted_keys(step);
        }
        return step;
    }

  private:
    std::string_view take(std::size_t size) {
        const std::string_view taken = rest_.substr(0, size);
        rest_.remove_prefix(taken.size());
        return taken;
    }

    /// "{key1 key2}"
    void read_bare_keys(Step& step) {
        while (!rest_.empty() && rest_[0] != '}') {
            rest_.remove_prefix(1);
            step.keys.emplace_back(take(rest_.find_first_of(" }")));
        }
        take(1);
    }

    /// "["key1" "key2"]", or one of several "[name='key']".
    void read_quoted_keys(Step& step) {
        take(1);
        skip_blanks();
        const bool is_named = !rest_.empty() && rest_[0] != '"';
        if (is_named) {
            std::string_view name = take(rest_.find_first_of(" ="));
            name.remove_prefix(name.find(':') + 1);
            step.key_names.push_back(name);
            take(rest_.find('='));
            take(1);
        }
        do {
            skip_blanks();
            step.keys.push_back(take_quoted(is_named));
        } while (!rest_.empty() && rest_[0] == ' ' && !is_named);
        take(rest_.find(']'));
        take(1);
    }

    void skip_blanks() { take(std::min(rest_.find_first_not_of(' '), rest_.size())); }

    /// What the quotes at the beginning hold; a backslash means itself where keys are named.
    std::string take_quoted(bool is_verbatim) {
        std::string text;
        const char quote = rest_.empty() ? '\0' : rest_[0];
        std::size_t i = 1;
        for (; i < rest_.size() && rest_[i] != quote; ++i) {
            i += !is_verbatim && rest_[i] == '\\' && i + 1 < rest_.size() ? 1 : 0;
            text += rest_[i];
        }
        take(i + 1);
        return text;
    }

    std::string_view rest_;
};

using Address = std::array<unsigned char, sizeof(in6_addr)>;

std::optional<Address> ipv6_address(std::string_view text) {
    Address address{};
    const std::string terminated(text.substr(0, text.find('/')));
    return inet_pton(AF_INET6, terminated.c_str(), address.data()) == 1 ? std::optional(address)
                                                                        : std::nullopt;
}

/// An IPv6 address has many spellings, and the platform another one than the model.
bool is_same_address(std::string_view one, std::string_view other) {
    const std::optional<Address> address = ipv6_address(one);
    return address && address == ipv6_address(other) &&
           one.substr(std::min(one.find('/'), one.size())) ==
               other.substr(std::min(other.find('/'), other.size()));
}

bool means(const DocumentNode& leaf, const std::string& value) {
    return leaf.text == value || canonical_value(*leaf.schema, leaf.text) == value ||
           is_same_address(leaf.text, value);
}

bool reads(const DocumentNode& leaf, const std::string& value) {
    return leaf.text == value;
}

using Compare = bool (*)(const DocumentNode& leaf, const std::string& value);

const DocumentNode* child_named(const DocumentNode& node, std::string_view name) {
    const DocumentNode* child = node.first_child;
    while (child != nullptr && (child->schema == nullptr || name != child->schema->name)) {
        child = child->next;
    }
    return child;
}

bool has_keys(const DocumentNode& node, const Step& step, Compare compare) {
    if (node.schema->nodetype != LYS_LIST) {
        return step.keys.empty() || compare(node, step.keys[0]);
    }
    const lysc_node* key = lysc_node_child(node.schema);
    for (std::size_t i = 0; i < step.keys.size(); ++i) {
        const DocumentNode* const leaf =
            step.key_names.empty() ? node.child(key) : child_named(node, step.key_names[i]);
        if (leaf == nullptr || !compare(*leaf, step.keys[i])) {
            return false;
        }
        key = key->next;
    }
    return true;
}

/// The first of `node` and its later siblings that `step` names.
const DocumentNode* find_sibling(const DocumentNode* node, const Step& step, Compare compare) {
    for (; node != nullptr; node = node->next) {
        if (node->schema != nullptr && step.name == node->schema->name &&
            (step.module.empty() || step.module == node->schema->module->name) &&
            has_keys(*node, step, compare)) {
            return node;
        }
    }
    return nullptr;
}

const DocumentNode* find_sibling(const DocumentNode* node, const Step& step) {
    // Most texts are canonical, and comparing them costs little.
    const DocumentNode* const found = find_sibling(node, step, reads);
    return found == nullptr ? find_sibling(node, step, means) : found;
}

}  // namespace

const DocumentNode* DocumentNode::child(const lysc_node* wanted) const {
    const DocumentNode* node = first_child;
    while (node != nullptr && node->schema != wanted) {
        node = node->next;
    }
    return node;
}

Location Document::location_of(const DocumentNode& node) const {
    const DocumentNode* named = &node;
    if (node.schema != nullptr && node.schema->nodetype == LYS_LIST) {
        const DocumentNode* const key = node.child(lysc_node_child(node.schema));
        named = key == nullptr ? named : key;
    }
    const DocumentSource& source = *sources_[named->source];
    if (source.lines == nullptr) {
        source.lines = std::make_unique<SourceText>(source.file.name, source.file.bytes);
    }
    return source.lines->location(named->offset);
}

const DocumentNode* Document::find(std::string_view path) const {
    PathText steps(path);
    const DocumentNode* node = root_;
    while (const std::optional<Step> step = steps.next()) {
        const DocumentNode* const below = find_sibling(node->first_child, *step);
        if (below == nullptr) {
            break;
        }
        node = below;
    }
    return node;
}

const DocumentNode* Document::find_again(std::string_view path, const DocumentNode& node) {
    PathText steps(path);
    Step last;
    while (std::optional<Step> step = steps.next()) {
        last = std::move(*step);
    }
    return find_sibling(node.next, last);
}

const DocumentNode* find_among(const DocumentNode* first, std::string_view step) {
    const std::string path = "/" + std::string(step);
    return find_sibling(first, *PathText(path).next());
}

Location Document::locate(std::string_view path) const {
    const DocumentNode& node = *find(path);
    return &node == root_ ? Location{name(), 0, 0} : location_of(node);
}
