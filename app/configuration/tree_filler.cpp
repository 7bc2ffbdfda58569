#include "configuration/tree_filler.h"

#include <algorithm>
#include <utility>

#include "configuration/origin.h"
#include "model/libyang_version.h"
#include "model/yang_schema.h"

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
        // A key came with its entry, a value of a leaf-list with the first one.
        const bool is_next_value = node->schema->nodetype == LYS_LEAFLIST &&
                                   node->prev->next == node && node->prev->schema == node->schema;
        if (is_supported(*node->schema) && !lysc_is_key(node->schema) && !is_next_value) {
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
