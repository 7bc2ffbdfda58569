#include "data_tree.h"

#include <algorithm>

#include "entry_keys.h"
#include "keypath.h"
#include "path_lookup.h"
#include "path_reader.h"
#include "tree_store.h"
#include "value_text.h"

namespace local_platform {
namespace {

Node& child_of(TreeStore& store, Node& parent, std::size_t index) {
    auto& slot = const_cast<const Node*&>(parent.children[index]);
    if (slot == nullptr) {
        slot = &store.make_node(parent.schema->children[index], &parent);
    }
    return const_cast<Node&>(*slot);
}

void set_leaf(TreeStore& store, Node& leaf, std::string_view text) {
    const std::optional<std::string> canonical = canonical_text(*leaf.schema, text);
    if (!canonical) {
        throw PlatformError("\"" + std::string(text) + "\" is no value of " + leaf.schema->name);
    }
    leaf.text = store.keep(*canonical);
}

/// Appends the entry with `keys`, which are canonical, to `list`, its key leaves set.
Node& append_entry(TreeStore& store, Node& list, const std::vector<std::string>& keys) {
    for (const std::string& key : keys) {
        if (imitates_path(*store.schema, key)) {
            throw PlatformError("the key \"" + key +
                                "\" spells a path to another entry; rename the entry");
        }
    }
    Node& entry = store.append_entry(list, joined(keys));
    std::string_view rest = entry.text;
    for (std::size_t i = 0; i < keys.size(); ++i) {
        child_of(store, entry, key_position(*list.schema, i)).text = rest.substr(0, keys[i].size());
        // A NUL follows each of them.
        rest.remove_prefix(std::min(rest.size(), keys[i].size() + 1));
    }
    return entry;
}

/// The entry of `list` that has these keys, added when it is not there.
Node& entry_of(TreeStore& store, Node& list, const std::vector<std::string>& keys) {
    const auto canonical = canonical_keys(*list.schema, keys);
    if (!canonical) {
        throw PlatformError("the keys of an entry of " + list.schema->name +
                            " do not fit the list");
    }
    const Node* const found = find_entry(store.index, list, joined(*canonical));
    return found != nullptr ? const_cast<Node&>(*found) : append_entry(store, list, *canonical);
}

Node& step_into(TreeStore& store, Node& node, const PathStep& step) {
    const int index = node.schema->child_index(step.name);
    if (index < 0) {
        throw PlatformError("no node " + std::string(step.name) + " in the model");
    }
    Node& child = child_of(store, node, static_cast<std::size_t>(index));
    const bool has_keys = !step.keys.empty();
    if ((child.schema->kind == NodeKind::list) != has_keys) {
        throw PlatformError(child.schema->name + (has_keys ? " is no list" : " needs keys"));
    }
    return has_keys ? entry_of(store, child, step.keys) : child;
}

/// Adds what `step` names below `parent`; a leaf gets `text`.
Node& add_step(TreeStore& store, Node& parent, const PathStep& step, std::string_view text) {
    try {
        Node& node = step_into(store, parent, step);
        if (node.schema->kind == NodeKind::leaf) {
            set_leaf(store, node, text);
        }
        return node;
    } catch (const PlatformError& error) {
        confd_hkeypath_t kp;
        fill_keypath(parent, kp);
        throw PlatformError(keypath_text(kp) + "/" + std::string(step.name) +
                            (step.keys.empty() ? "" : keys_text(step.keys)) + ": " + error.what());
    }
}

}  // namespace

int SchemaNode::child_index(std::string_view child_name) const {
    for (std::size_t i = 0; i < children.size(); ++i) {
        if (children[i].name == child_name) {
            return static_cast<int>(i);
        }
    }
    return -1;
}

confd_value_t Node::value() const {
    return schema->kind == NodeKind::leaf ? value_of(*schema, text) : tag_of(*schema);
}

DataTree::DataTree(std::shared_ptr<const SchemaNode> schema)
    : store_(std::make_shared<const TreeStore>(std::move(schema))) {}

const Node* DataTree::find(std::string_view path) const {
    const Lookup found = look_up(*store_, path);
    if (found.error != nullptr) {
        throw PlatformError(std::string(path) + ": " + found.error);
    }
    return found.node;
}

const Node& DataTree::root() const {
    return *store_->root;
}

TreeBuilder::TreeBuilder(std::shared_ptr<const SchemaNode> schema)
    : store_(std::make_shared<TreeStore>(std::move(schema))) {}

Node& TreeBuilder::root() {
    return *store_->root;
}

Node& TreeBuilder::add(Node& parent, std::string_view name, std::string_view text) {
    return add_step(*store_, parent, {name, {}}, text);
}

Node& TreeBuilder::add_entry(Node& parent, std::string_view name, const std::vector<Key>& keys) {
    PathStep step{name, {}};
    for (const Key& key : keys) {
        step.keys.emplace_back(key.text);
    }
    Node& entry = add_step(*store_, parent, step, {});
    for (std::size_t i = 0; i < keys.size(); ++i) {
        child_of(*store_, entry, key_position(*entry.schema, i)).mark = keys[i].mark;
    }
    return entry;
}

TreeBuilder& TreeBuilder::set(std::string_view path, std::string_view text) {
    PathReader reader(path);
    PathStep step;
    Node* node = store_->root;
    try {
        while (reader.next(step)) {
            node = &step_into(*store_, *node, step);
        }
        if (reader.is_malformed()) {
            throw PlatformError("malformed path");
        }
        if (node->schema->kind == NodeKind::leaf) {
            set_leaf(*store_, *node, text);
        }
    } catch (const PlatformError& error) {
        throw PlatformError(std::string(path) + ": " + error.what());
    }
    return *this;
}

DataTree TreeBuilder::build() && {
    return DataTree(std::move(store_));
}

}  // namespace local_platform
