#include "data_tree.h"

#include <algorithm>

#include "keypath.h"
#include "path_lookup.h"
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

/// Sets `leaf`, whose canonical text is kept at `text`.
void set_value(TreeStore& store, Node& leaf, std::string_view text, const confd_value_t& value) {
    auto* const kept = store.arena.make<confd_value_t>(1);
    *kept = value;
    leaf.text = text;
    leaf.values = {kept, 1};
}

void set_leaf(TreeStore& store, Node& leaf, std::string_view text) {
    CanonicalValue canonical;
    if (!canonical.read(*leaf.schema, text)) {
        throw PlatformError("\"" + std::string(text) + "\" is no value of " + leaf.schema->name);
    }
    const std::string_view kept = store.keep(canonical.text());
    set_value(store, leaf, kept, canonical.value(kept));
}

/// Appends the entry with `keys` to `list`, its key leaves set.
Node& append_entry(TreeStore& store, Node& list, const CanonicalKeys& keys) {
    Node& entry = store.append_entry(list, keys.text);
    std::size_t begin = 0;
    for (std::size_t i = 0; i < entry.values.size(); ++i) {
        // In the entry's text each key has a NUL behind it.
        const std::string_view text = entry.text.substr(begin, keys.values[i].text().size());
        begin += text.size() + 1;
        if (imitates_path(*store.schema, text)) {
            throw PlatformError("the key \"" + std::string(text) +
                                "\" spells a path to another entry; rename the entry");
        }
        auto& value = const_cast<confd_value_t&>(entry.values[i]);
        value = keys.values[i].value(text);
        const int position = list.schema->child_index(list.schema->keys[i]);
        set_value(store, child_of(store, entry, static_cast<std::size_t>(position)), text, value);
    }
    return entry;
}

/// The entry of `list` that `step` names, added when it is not there.
Node& entry_of(TreeStore& store, Node& list, const PathStep& step) {
    CanonicalKeys keys;
    if (step.key_count != list.schema->keys.size() || !keys.read(*list.schema, step)) {
        throw PlatformError("the keys of an entry of " + list.schema->name +
                            " do not fit the list");
    }
    const Node* const found = store.index.find(list, keys.text);
    return found != nullptr ? const_cast<Node&>(*found) : append_entry(store, list, keys);
}

Node& step_into(TreeStore& store, Node& node, const PathStep& step) {
    const int index = node.schema->child_index(step.name);
    if (index < 0) {
        throw PlatformError("no node " + std::string(step.name) + " in the model");
    }
    Node& child = child_of(store, node, static_cast<std::size_t>(index));
    if ((child.schema->kind == NodeKind::list) != step.has_keys) {
        throw PlatformError(child.schema->name + (step.has_keys ? " is no list" : " needs keys"));
    }
    return step.has_keys ? entry_of(store, child, step) : child;
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
        const std::vector<std::string_view> keys(step.keys.begin(),
                                                 step.keys.begin() + step.key_count);
        throw PlatformError(keypath_text(kp) + "/" + std::string(step.name) +
                            (step.has_keys ? keys_text(keys) : "") + ": " + error.what());
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
    return schema->kind == NodeKind::leaf ? values[0] : tag_of(*schema);
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
    PathStep step;
    step.name = name;
    return add_step(*store_, parent, step, text);
}

Node& TreeBuilder::add_entry(Node& parent, std::string_view name, const std::vector<Key>& keys) {
    PathStep step;
    step.name = name;
    step.has_keys = true;
    step.key_count = std::min(keys.size(), step.keys.size());
    std::transform(keys.begin(), keys.begin() + static_cast<std::ptrdiff_t>(step.key_count),
                   step.keys.begin(), [](const Key& key) { return key.text; });
    Node& entry = add_step(*store_, parent, step, {});
    for (std::size_t i = 0; i < step.key_count; ++i) {
        const int position = entry.schema->child_index(entry.schema->keys[i]);
        child_of(*store_, entry, static_cast<std::size_t>(position)).mark = keys[i].mark;
    }
    return entry;
}

TreeBuilder& TreeBuilder::set(std::string_view path, std::string_view text) {
    PathReader reader(path);
    PathStep step;
    Node* node = store_->root;
    try {
        PathReader::Result result = reader.next(step);
        for (; result == PathReader::Result::step; result = reader.next(step)) {
            node = &step_into(*store_, *node, step);
        }
        if (result == PathReader::Result::malformed) {
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

void fill_keypath(const Node& node, confd_hkeypath_t& kp) {
    kp.len = 0;
    for (const Node* step = &node; step->parent != nullptr; step = step->parent) {
        if (kp.len == MAXDEPTH) {
            throw PlatformError("a path has more than " + std::to_string(MAXDEPTH) + " elements");
        }
        confd_value_t* const element = kp.v[kp.len++];
        const confd_value_t tag = tag_of(*step->schema);
        const std::size_t count = step->is_entry() ? step->values.size() : 1;
        std::copy_n(step->is_entry() ? step->values.begin() : &tag, count, element);
        element[count].type = C_NOEXISTS;
    }
}

}  // namespace local_platform
