/// What a tree is made of.
#pragma once

#include <algorithm>
#include <cstddef>
#include <memory>
#include <vector>

#include "data_tree.h"

namespace local_platform {

/// Memory that is taken piece by piece and freed as one. Its blocks have one size, so that they fit
/// where others were freed, as libyang frees its tree while ours is built.
class Arena {
  public:
    /// `count` items, all zero.
    template <typename Item>
    Item* make(std::size_t count) {
        // NOLINTNEXTLINE(bugprone-sizeof-expression): it may be pointers that are wanted
        void* const memory = take(count * sizeof(Item));
        return std::uninitialized_value_construct_n(static_cast<Item*>(memory), count) - count;
    }

  private:
    void* take(std::size_t size);

    std::vector<std::unique_ptr<std::byte[]>> blocks_;
    std::byte* free_ = nullptr;  ///< of the last block
    std::size_t free_size_ = 0;
};

/// All entries of all lists of a tree by their list and key text: one flat table, in which an entry
/// lies at the first free place from its hash on.
class EntryIndex {
  public:
    /// The entry of `list` with the canonical key text `key`; null when there is none.
    const Node* find(const Node& list, std::string_view key) const;
    void add(const Node& entry);

  private:
    std::size_t place_of(const Node& list, std::string_view key) const;

    std::vector<const Node*> places_ = std::vector<const Node*>(16);  ///< a power of two
    std::size_t count_ = 0;
};

struct TreeStore {
    explicit TreeStore(std::shared_ptr<const SchemaNode> model);

    /// A node without children, text and values.
    Node& make_node(const SchemaNode& schema, const Node* parent);
    /// An entry of `list` with the canonical key text `text`, its key leaves still to be set.
    Node& append_entry(Node& list, std::string_view text);
    /// A copy that is NUL-terminated.
    std::string_view keep(std::string_view text);

    std::shared_ptr<const SchemaNode> schema;
    Arena arena;
    EntryIndex index;
    Node* root;
};

}  // namespace local_platform
