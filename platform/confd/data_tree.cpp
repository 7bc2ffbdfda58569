#include "data_tree.h"

#include <algorithm>

#include "keypath.h"
#include "path_lookup.h"
#include "value_text.h"

namespace local_platform {
namespace {

confd_value_t tag_of(const SchemaNode& schema) {
    confd_value_t tag;
    tag.type = C_XMLTAG;
    tag.val.xmltag = &schema;
    return tag;
}

std::unique_ptr<Node> make_node(const SchemaNode& schema, const Node* parent) {
    auto node = std::make_unique<Node>();
    node->schema = &schema;
    node->parent = parent;
    node->value = tag_of(schema);
    return node;
}

/// Gives `node` one empty slot for each child that the model allows.
void reserve_children(Node& node) {
    node.children.resize(node.schema->children.size());
}

Node& child_of(Node& parent, std::size_t index) {
    auto& slot = parent.children[index];
    if (slot == nullptr) {
        slot = make_node(parent.schema->children[index], &parent);
        if (slot->schema->kind == NodeKind::container) {
            reserve_children(*slot);
        }
    }
    return *slot;
}

void set_leaf(Node& leaf, std::string_view text) {
    if (!canonical_text(*leaf.schema, text, leaf.text)) {
        throw PlatformError("\"" + std::string(text) + "\" is no value of " + leaf.schema->name);
    }
    parse_value(*leaf.schema, leaf.text, leaf.value);
}

const SchemaNode& model_of(const Node& node) {
    return node.parent == nullptr ? *node.schema : model_of(*node.parent);
}

/// Appends the entry with the keys of `step` to `list`, its key leaves set.
Node& append_entry(Node& list, const PathStep& step, std::string index_key) {
    auto entry = make_node(*list.schema, &list);
    entry->is_entry = true;
    reserve_children(*entry);
    for (std::size_t i = 0; i < step.key_count; ++i) {
        const int position = list.schema->child_index(list.schema->keys[i]);
        Node& key = child_of(*entry, static_cast<std::size_t>(position));
        set_leaf(key, step.keys[i]);
        if (imitates_path(model_of(list), key.text)) {
            throw PlatformError("the key \"" + key.text +
                                "\" spells a path to another entry; rename the entry");
        }
        entry->keys.push_back(key.value);
    }
    entry->index_key = std::move(index_key);
    list.children.push_back(std::move(entry));
    Node& appended = *list.children.back();
    list.index.emplace(appended.index_key, &appended);
    return appended;
}

/// The entry of `list` that `step` names, added when it is not there.
Node& entry_of(Node& list, const PathStep& step) {
    std::string index_key;
    if (step.key_count != list.schema->keys.size() ||
        !canonical_index_key(*list.schema, step, index_key)) {
        throw PlatformError("the keys of an entry of " + list.schema->name +
                            " do not fit the list");
    }
    const auto found = list.index.find(index_key);
    if (found != list.index.end()) {
        return const_cast<Node&>(*found->second);
    }
    return append_entry(list, step, std::move(index_key));
}

Node& step_into(Node& node, const PathStep& step) {
    const int index = node.schema->child_index(step.name);
    if (index < 0) {
        throw PlatformError("no node " + std::string(step.name) + " in the model");
    }
    Node& child = child_of(node, static_cast<std::size_t>(index));
    if ((child.schema->kind == NodeKind::list) != step.has_keys) {
        throw PlatformError(child.schema->name + (step.has_keys ? " is no list" : " needs keys"));
    }
    return step.has_keys ? entry_of(child, step) : child;
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

DataTree::DataTree(std::shared_ptr<const SchemaNode> schema) : schema_(std::move(schema)) {
    auto root = make_node(*schema_, nullptr);
    reserve_children(*root);
    root_ = std::move(root);
}

const Node* DataTree::find(std::string_view path) const {
    const Lookup found = look_up(*root_, path);
    if (found.error != nullptr) {
        throw PlatformError(std::string(path) + ": " + found.error);
    }
    return found.node;
}

TreeBuilder::TreeBuilder(std::shared_ptr<const SchemaNode> schema)
    : schema_(std::move(schema)), root_(make_node(*schema_, nullptr)) {
    reserve_children(*root_);
}

TreeBuilder& TreeBuilder::set(std::string_view path, std::string_view text) {
    PathReader reader(path);
    PathStep step;
    Node* node = root_.get();
    try {
        PathReader::Result result = reader.next(step);
        for (; result == PathReader::Result::step; result = reader.next(step)) {
            node = &step_into(*node, step);
        }
        if (result == PathReader::Result::malformed) {
            throw PlatformError("malformed path");
        }
        if (node->schema->kind == NodeKind::leaf) {
            set_leaf(*node, text);
        }
    } catch (const PlatformError& error) {
        throw PlatformError(std::string(path) + ": " + error.what());
    }
    return *this;
}

DataTree TreeBuilder::build() && {
    DataTree tree(std::move(schema_));
    tree.root_ = std::move(root_);
    return tree;
}

void fill_keypath(const Node& node, confd_hkeypath_t& kp) {
    kp.len = 0;
    for (const Node* step = &node; step->parent != nullptr; step = step->parent) {
        if (kp.len == MAXDEPTH) {
            throw PlatformError("a path has more than " + std::to_string(MAXDEPTH) + " elements");
        }
        confd_value_t* const element = kp.v[kp.len++];
        const confd_value_t tag = tag_of(*step->schema);
        const std::size_t count = step->is_entry ? step->keys.size() : 1;
        std::copy_n(step->is_entry ? step->keys.data() : &tag, count, element);
        element[count].type = C_NOEXISTS;
    }
}

}  // namespace local_platform
