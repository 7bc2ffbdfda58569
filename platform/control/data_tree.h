/// The trees that the MAAPI and CDB operations read: a transaction, a committed datastore.
#pragma once

#include <memory>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

#include "platform_error.h"
#include "schema_node.h"

#pragma GCC visibility push(default)

namespace local_platform {

/// A node of a data tree. Once built it never changes or moves while its tree lives.
struct Node {
    const SchemaNode* schema = nullptr;
    const Node* parent = nullptr;
    bool is_entry = false;            ///< an entry of the list `schema`; its parent is the list
    std::string text;                 ///< a leaf's canonical text
    confd_value_t value{};            ///< a leaf's value; for every other node a C_XMLTAG
    std::vector<confd_value_t> keys;  ///< an entry's key values
    /// A list's entries in document order; otherwise by position in the model, null when absent.
    std::vector<std::unique_ptr<Node>> children;
    /// A list's entries by canonical key text; several keys are joined by NUL.
    std::unordered_map<std::string_view, const Node*> index;
    std::string index_key;  ///< an entry's text in `index`
};

/// An immutable tree of typed nodes; copies share it.
class DataTree {
  public:
    /// An empty tree of `schema`.
    explicit DataTree(std::shared_ptr<const SchemaNode> schema);

    /// The node at `path`; null when it is absent. Throws PlatformError for a path that is
    /// malformed or names no node of the model.
    const Node* find(std::string_view path) const;
    const Node& root() const { return *root_; }
    const SchemaNode& schema() const { return *schema_; }

  private:
    friend class TreeBuilder;
    std::shared_ptr<const SchemaNode> schema_;
    std::shared_ptr<const Node> root_;
};

/// Collects the nodes of a tree, in document order.
class TreeBuilder {
  public:
    explicit TreeBuilder(std::shared_ptr<const SchemaNode> schema);

    /// Adds the node at `path` with every ancestor that is not there yet, keys included; a leaf
    /// gets `text` as its value. Throws PlatformError for a bad path, a text that the type does
    /// not allow, or a key that would spell a path to another entry ("x}/sub{z", where the model
    /// has such a list); the builder is of no further use then.
    TreeBuilder& set(std::string_view path, std::string_view text = {});
    DataTree build() &&;

  private:
    std::shared_ptr<const SchemaNode> schema_;
    std::unique_ptr<Node> root_;
};

}  // namespace local_platform

#pragma GCC visibility pop
