#include "tree_store.h"

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
        blocks_.emplace_back(new std::byte[free_size_]);
        free_ = blocks_.back().get();
    }
    free_size_ -= aligned;
    return std::exchange(free_, free_ + aligned);
}

std::size_t EntryIndex::place_of(const Node& list, std::string_view key) const {
    const std::size_t mask = places_.size() - 1;
    std::size_t at = std::hash<std::string_view>()(key) ^ std::hash<const Node*>()(&list) >> 4U;
    for (;; ++at) {
        const Node* const entry = places_[at & mask];
        if (entry == nullptr || (entry->parent == &list && entry->text == key)) {
            return at & mask;
        }
    }
}

const Node* EntryIndex::find(const Node& list, std::string_view key) const {
    return places_[place_of(list, key)];
}

void EntryIndex::add(const Node& entry) {
    if (++count_ > places_.size() / 2) {
        const auto old = std::exchange(places_, std::vector<const Node*>(2 * places_.size()));
        for (const Node* const one : old) {
            if (one != nullptr) {
                places_[place_of(*one->parent, one->text)] = one;
            }
        }
    }
    places_[place_of(*entry.parent, entry.text)] = &entry;
}

TreeStore::TreeStore(std::shared_ptr<const SchemaNode> model)
    : schema(std::move(model)), root(&make_node(*schema, nullptr)) {}

Node& TreeStore::make_node(const SchemaNode& of, const Node* parent) {
    Node& node = *arena.make<Node>(1);
    node.schema = &of;
    node.parent = parent;
    if (of.kind == NodeKind::container) {
        node.children = {arena.make<const Node*>(of.children.size()), of.children.size()};
    }
    return node;
}

Node& TreeStore::append_entry(Node& list, std::string_view text) {
    Node& entry = make_node(*list.schema, &list);
    const std::size_t children = list.schema->children.size();
    entry.children = {arena.make<const Node*>(children), children};
    const std::size_t keys = list.schema->keys.size();
    entry.values = {arena.make<confd_value_t>(keys), keys};
    entry.text = keep(text);

    // A list's room doubles whenever it is full, that is, at a power of two.
    const std::size_t size = list.children.size();
    auto* entries = const_cast<const Node**>(list.children.begin());
    if (size == 0 || (size >= kFirstEntries && (size & (size - 1)) == 0)) {
        entries = arena.make<const Node*>(std::max(kFirstEntries, 2 * size));
        std::copy_n(list.children.begin(), size, entries);
    }
    entries[size] = &entry;
    list.children = {entries, size + 1};
    index.add(entry);
    return entry;
}

std::string_view TreeStore::keep(std::string_view text) {
    char* const kept = arena.make<char>(text.size() + 1);
    std::copy(text.begin(), text.end(), kept);
    return {kept, text.size()};
}

}  // namespace local_platform
