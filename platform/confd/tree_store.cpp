#include "tree_store.h"

#include <algorithm>
#include <functional>
#include <utility>

namespace local_platform {
namespace {

constexpr std::size_t kBlockSize = 32768;
constexpr std::size_t kFirstEntries = 4;

}  // namespace

void* Arena::take(std::size_t size) {
    const std::size_t aligned = (size + alignof(Node) - 1) / alignof(Node) * alignof(Node);
    if (aligned > free_size_) {
        free_size_ = std::max(aligned, kBlockSize);
        free_ = blocks_.emplace_back(new std::byte[free_size_]).get();
    }
    free_size_ -= aligned;
    return std::exchange(free_, free_ + aligned);
}

std::size_t EntryHash::operator()(const Node* entry) const {
    return std::hash<std::string_view>()(entry->text) ^ std::hash<const Node*>()(entry->parent);
}

bool IsSameEntry::operator()(const Node* one, const Node* other) const {
    return one->parent == other->parent && one->text == other->text;
}

const Node* find_entry(const EntryIndex& index, const Node& list, std::string_view keys) {
    Node wanted;
    wanted.parent = &list;
    wanted.text = keys;
    const auto found = index.find(&wanted);
    return found == index.end() ? nullptr : *found;
}

TreeStore::TreeStore(std::shared_ptr<const SchemaNode> model)
    : schema(std::move(model)), root(&make_node(*schema, nullptr)) {}

Node& TreeStore::make_node(const SchemaNode& of, const Node* parent) {
    Node& node = *arena.make<Node>(1);
    node.schema = &of;
    node.parent = parent;
    // A list itself has its entries for children, which come later.
    if (of.kind == NodeKind::container || node.is_entry()) {
        node.children = {arena.make<const Node*>(of.children.size()), of.children.size()};
    }
    return node;
}

Node& TreeStore::append_entry(Node& list, std::string_view keys) {
    Node& entry = make_node(*list.schema, &list);
    entry.text = keep(keys);

    // A list's room doubles whenever it is full, that is, at a power of two.
    const std::size_t size = list.children.size();
    auto* entries = const_cast<const Node**>(list.children.begin());
    if (size == 0 || (size >= kFirstEntries && (size & (size - 1)) == 0)) {
        entries = arena.make<const Node*>(std::max(kFirstEntries, 2 * size));
        std::copy_n(list.children.begin(), size, entries);
    }
    entries[size] = &entry;
    list.children = {entries, size + 1};
    index.insert(&entry);
    return entry;
}

std::string_view TreeStore::keep(std::string_view text) {
    char* const kept = arena.make<char>(text.size() + 1);
    std::copy(text.begin(), text.end(), kept);
    return {kept, text.size()};
}

}  // namespace local_platform
