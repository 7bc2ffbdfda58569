#include "configuration/tree_filler.h"

#include <algorithm>
#include <utility>

#include "configuration/libyang_version.h"
#include "configuration/origin.h"
#include "configuration/yang_schema.h"

using local_platform::Node;
using local_platform::TreeBuilder;

namespace {

std::uintptr_t mark_of(const lyd_node& node) {
    return reinterpret_cast<std::uintptr_t>(node.priv);
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
            if (kSortsEntries && node->schema->nodetype == LYS_LIST &&
                is_supported(*node->schema) && !lysc_is_userordered(node->schema)) {
                next = add_entries(node, parent);
                continue;
            }
            next = node->next;
            add_sibling(node, parent);
        }
    }

  private:
    void add_sibling(lyd_node* node, Parent& parent) {
        // A key came with its entry.
        if (is_supported(*node->schema) && !lysc_is_key(node->schema)) {
            add(*node, parent);
        }
        if (node->schema->nodetype == LYS_LIST && node->parent != nullptr) {
            lyd_free_tree(node);
        }
    }

    /// Adds the entries of the list that begins with `entry` in the order of the file: what an edit
    /// adds follows what was there. Gives what is behind them.
    lyd_node* add_entries(lyd_node* entry, Parent& parent) {
        std::vector<lyd_node*> entries;
        const lysc_node* const list = entry->schema;
        for (; entry != nullptr && entry->schema == list; entry = entry->next) {
            entries.push_back(entry);
        }
        const auto place_of = [](const lyd_node* one) {
            const Origin origin = origin_of(mark_of(*lyd_child(one)));
            return std::pair(origin.source == 0, origin.offset);
        };
        std::stable_sort(entries.begin(), entries.end(), [&](const auto* one, const auto* other) {
            return place_of(one) < place_of(other);
        });
        for (lyd_node* const one : entries) {
            add_sibling(one, parent);
        }
        return entry;
    }

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
        const bool is_leaf = schema.nodetype == LYS_LEAF;
        Node& added = builder_.add(around, schema.name, is_leaf ? lyd_get_value(&node) : "");
        added.mark = mark_of(node);
        if (!is_leaf) {
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
