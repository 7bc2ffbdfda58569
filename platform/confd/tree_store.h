/// What a tree is made of.
#pragma once

#include <cstddef>
#include <memory>
#include <memory_resource>
#include <unordered_set>
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

struct EntryHash {
    std::size_t operator()(const Node* entry) const;
};
struct IsSameEntry {
    bool operator()(const Node* one, const Node* other) const;
};
/// All entries of all lists of a tree, by their list and keys.
using EntryIndex = std::pmr::unordered_set<const Node*, EntryHash, IsSameEntry>;

/// The entry of `list` whose text is `keys`; null when there is none.
const Node* find_entry(const EntryIndex& index, const Node& list, std::string_view keys);

struct TreeStore {
    explicit TreeStore(std::shared_ptr<const SchemaNode> model);

    /// A node without text whose children are all absent.
    Node& make_node(const SchemaNode& of, const Node* parent);
    /// An entry of `list` with the text `keys`, its key leaves still to be set.
    Node& append_entry(Node& list, std::string_view keys);
    /// A copy that is NUL-terminated.
    std::string_view keep(std::string_view text);

    std::shared_ptr<const SchemaNode> schema;
    Arena arena;
    std::pmr::monotonic_buffer_resource index_memory;  ///< its pieces would lie between our blocks
    EntryIndex index{&index_memory};
    Node* root;
};

}  // namespace local_platform
