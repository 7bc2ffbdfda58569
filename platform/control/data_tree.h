/// The trees that the MAAPI and CDB operations read: a transaction, a committed datastore.
#pragma once

#include <memory>
#include <string_view>
#include <vector>

#include "platform_error.h"
#include "schema_node.h"

namespace local_platform {

/// Items that lie side by side in a tree, which owns them.
template <typename Item>
class Span {
  public:
    Span() = default;
    Span(const Item* items, std::size_t size) : items_(items), size_(size) {}

    const Item* begin() const { return items_; }
    const Item* end() const { return items_ + size_; }
    std::size_t size() const { return size_; }
    bool empty() const { return size_ == 0; }
    const Item& operator[](std::size_t i) const { return items_[i]; }

  private:
    const Item* items_ = nullptr;
    std::size_t size_ = 0;
};

/// A node of a data tree. Once built it never changes or moves while its tree lives. Large
/// configurations have millions.
struct Node {
    const SchemaNode* schema = nullptr;
    const Node* parent = nullptr;
    /// A leaf's canonical text (a leaf-list's values joined by NUL), an entry's canonical keys,
    /// joined by NUL; NUL-terminated.
    std::string_view text;
    /// The host's own, such as where it read a leaf; nothing here looks at it.
    std::uintptr_t mark = 0;
    /// A list's entries in document order; otherwise by position in the model, null when absent.
    Span<const Node*> children;

    /// Whether it is an entry of the list `schema`; its parent is the list.
    bool is_entry() const { return parent != nullptr && parent->schema == schema; }
    /// A leaf's value; for every other node a C_XMLTAG.
    confd_value_t value() const;
};

/// What a tree is made of.
struct TreeStore;

/// An immutable tree of typed nodes; copies share it.
class DataTree {
  public:
    /// An empty tree of `schema`.
    explicit DataTree(std::shared_ptr<const SchemaNode> schema);

    /// The node at `path`; null when it is absent. Throws PlatformError for a path that is
    /// malformed or names no node of the model.
    const Node* find(std::string_view path) const;
    const Node& root() const;
    const SchemaNode& schema() const { return *root().schema; }
    const TreeStore& store() const { return *store_; }

  private:
    friend class TreeBuilder;
    explicit DataTree(std::shared_ptr<const TreeStore> store) : store_(std::move(store)) {}

    std::shared_ptr<const TreeStore> store_;
};

/// Collects the nodes of a tree, in document order. Every operation throws PlatformError, naming
/// the path, for a node that is not in the model, a text that its type does not allow, or a key
/// that would spell a path to another entry ("x}/sub{z", where the model has such a list); the
/// builder is of no further use then.
class TreeBuilder {
  public:
    explicit TreeBuilder(std::shared_ptr<const SchemaNode> schema);

    Node& root();
    /// Adds the container or leaf `name` to `parent`, a node of this tree, unless it is there; a
    /// leaf gets `text` as its value.
    Node& add(Node& parent, std::string_view name, std::string_view text = {});
    /// Adds the entry with `keys` to the list `name` of `parent`, unless it is there, and its key
    /// leaves, which get the keys' marks.
    struct Key {
        std::string_view text;
        std::uintptr_t mark = 0;
    };
    Node& add_entry(Node& parent, std::string_view name, const std::vector<Key>& keys);

    /// Adds the node at `path` with every ancestor that is not there yet; a leaf gets `text` as its
    /// value.
    TreeBuilder& set(std::string_view path, std::string_view text = {});
    DataTree build() &&;

  private:
    std::shared_ptr<TreeStore> store_;
};

}  // namespace local_platform
