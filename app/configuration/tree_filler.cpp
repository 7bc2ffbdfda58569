#include "configuration/tree_filler.h"

#include <libyang/libyang.h>

#include <algorithm>

#include "configuration/yang_schema.h"

using local_platform::Node;
using local_platform::TreeBuilder;

namespace {

std::uintptr_t mark_of(const lyd_node& node) {
    return reinterpret_cast<std::uintptr_t>(node.priv);
}

/// The values of a leaf-list that begins with `first`, joined by NUL; their order only counts where
/// the user gives it.
std::string values_of(const lyd_node& first) {
    std::vector<std::string> values;
    for (const lyd_node* one = &first; one != nullptr && one->schema == first.schema;
         one = one->next) {
        values.emplace_back(lyd_get_value(one));
    }
    if ((first.schema->flags & LYS_ORDBY_USER) == 0) {
        std::sort(values.begin(), values.end());
    }
    std::string text;
    for (const std::string& value : values) {
        text.append(text.empty() ? "" : std::string(1, '\0')).append(value);
    }
    return text;
}

std::string text_of(const lyd_node& node) {
    switch (node.schema->nodetype) {
        case LYS_LEAF:
            return lyd_get_value(&node);
        case LYS_LEAFLIST:
            return values_of(node);
        case LYS_CONTAINER:
            return {};
        default:
            return reinterpret_cast<const lyd_node_any&>(node).value.str;
    }
}

/// A node to add others to; a container without presence is made when it gets something.
class Parent {
  public:
    explicit Parent(Node& node) : node_(&node) {}
    Parent(Parent& around, const lyd_node& container) : around_(&around), container_(&container) {}

    Node& node(TreeBuilder& builder) {
        if (node_ == nullptr) {
            node_ = &builder.add(around_->node(builder), container_->schema->name);
            node_->mark = mark_of(*container_);
        }
        return *node_;
    }

  private:
    Node* node_ = nullptr;
    Parent* around_ = nullptr;
    const lyd_node* container_ = nullptr;
};

class TreeFiller {
  public:
    explicit TreeFiller(TreeBuilder& builder) : builder_(builder) {}

    void add_siblings(lyd_node* first, Parent& parent) {
        for (lyd_node *node = first, *next = nullptr; node != nullptr; node = next) {
            next = node->next;
            // A key came with its entry.
            const bool is_value_of_last = node->schema->nodetype == LYS_LEAFLIST && node != first &&
                                          node->prev->schema == node->schema;
            if (is_supported(*node->schema) && !lysc_is_key(node->schema) && !is_value_of_last) {
                add(*node, parent);
            }
            if (node->schema->nodetype == LYS_LIST && node->parent != nullptr) {
                lyd_free_tree(node);
            }
        }
    }

  private:
    void add(const lyd_node& node, Parent& parent) {
        const lysc_node& schema = *node.schema;
        if (is_nonpresence_container(schema)) {
            Parent own(parent, node);
            return add_siblings(lyd_child(&node), own);
        }
        Node& around = parent.node(builder_);
        if (schema.nodetype == LYS_LIST) {
            Parent own(add_entry(around, node));
            return add_siblings(lyd_child(&node), own);
        }
        Node& added = builder_.add(around, schema.name, text_of(node));
        added.mark = mark_of(node);
        if (schema.nodetype == LYS_CONTAINER) {
            Parent own(added);
            add_siblings(lyd_child(&node), own);
        }
    }

    Node& add_entry(Node& around, const lyd_node& entry) {
        keys_.clear();
        for (const lyd_node* key = lyd_child(&entry); key != nullptr && lysc_is_key(key->schema);
             key = key->next) {
            keys_.push_back({lyd_get_value(key), mark_of(*key)});
        }
        return builder_.add_entry(around, entry.schema->name, keys_);
    }

    TreeBuilder& builder_;
    std::vector<TreeBuilder::Key> keys_;
};

}  // namespace

local_platform::DataTree fill_tree(DataForest data,
                                   std::shared_ptr<const local_platform::SchemaNode> schema) {
    TreeBuilder builder(std::move(schema));
    Parent top(builder.root());
    TreeFiller(builder).add_siblings(data.first(), top);
    return std::move(builder).build();
}
