#include "trees/difference.h"

#include <algorithm>
#include <string_view>
#include <unordered_map>

#include "trees/cli_path.h"

using local_platform::Node;
using local_platform::NodeKind;
using local_platform::SchemaNode;

namespace {

/// One node in both configurations; null where it is absent.
struct Pair {
    const Node* before;
    const Node* after;

    const Node& either() const { return after != nullptr ? *after : *before; }
};

using Entries = std::unordered_map<std::string_view, std::size_t>;

using Nodes = local_platform::Span<const Node*>;

Nodes entries_of(const Node* list) {
    return list == nullptr ? Nodes() : list->children;
}

/// The positions of a list's entries by key.
Entries positions(const Node* list) {
    Entries positions;
    const Nodes entries = entries_of(list);
    for (std::size_t i = 0; i < entries.size(); ++i) {
        positions.emplace(entries[i]->text, i);
    }
    return positions;
}

const Node* entry_at(const Node* list, const Entries& positions, const Node& wanted) {
    const auto found = positions.find(wanted.text);
    return found == positions.end() ? nullptr : list->children[found->second];
}

/// An entry that is more than its keys heads a group of its own.
bool heads_group(const Node& node) {
    return node.is_entry() && node.schema->children.size() > node.schema->keys.size();
}

bool is_key(const Node& leaf) {
    const auto& keys = leaf.parent->schema->keys;
    return leaf.parent->is_entry() &&
           std::find(keys.begin(), keys.end(), leaf.schema->name) != keys.end();
}

/// Whether no file has `leaf`.
bool is_default(const Node& leaf) {
    return leaf.mark == 0;
}

std::string shown_value(const Node& leaf) {
    std::string text(leaf.schema->is_encrypted ? kSecretValue
                     : leaf.schema->is_anydata ? kDataValue
                                               : leaf.text);
    std::replace(text.begin(), text.end(), '\0', ' ');
    return text;
}

bool is_empty(const Node& node) {
    return std::all_of(node.children.begin(), node.children.end(),
                       [](const auto& child) { return child == nullptr; });
}

/// Which of `sequence`, numbers that differ, belong to a longest increasing part of it: moving the
/// others alone puts it in order.
std::vector<bool> in_longest_increase(const std::vector<std::size_t>& sequence) {
    std::vector<std::size_t>
        ends;  // where the increases of length 1, 2, ... with the least ends end
    std::vector<std::size_t> previous(sequence.size(), sequence.size());
    for (std::size_t i = 0; i < sequence.size(); ++i) {
        const auto place = std::lower_bound(
            ends.begin(), ends.end(), sequence[i],
            [&](std::size_t end, std::size_t value) { return sequence[end] < value; });
        if (place != ends.begin()) {
            previous[i] = *(place - 1);
        }
        if (place == ends.end()) {
            ends.push_back(i);
        } else {
            *place = i;
        }
    }
    std::vector<bool> is_in(sequence.size());
    for (std::size_t i = ends.empty() ? sequence.size() : ends.back(); i < sequence.size();
         i = previous[i]) {
        is_in[i] = true;
    }
    return is_in;
}

/// Where the entry at `position` of a list is, by the one before it.
std::string standing(const Node& list, std::size_t position) {
    return position == 0 ? "first" : "after " + cli_keys(*list.children[position - 1]);
}

class Comparison {
  public:
    void compare_group(const Pair& pair) {
        const std::string outer_group = group_;
        std::vector<Pair> outer_groups;
        outer_groups.swap(groups_);
        group_ = cli_path(pair.either());
        note_presence(pair);
        compare_children(pair);
        for (const Pair& group : std::exchange(groups_, std::move(outer_groups))) {
            compare_group(group);
        }
        group_ = outer_group;
    }

    std::vector<Change> changes;

  private:
    using Value = std::optional<std::string>;

    void note(ChangeKind kind, const Node& node, Value old_value = {}, Value new_value = {}) {
        std::string words = cli_path(node);
        words.erase(0, group_.empty() ? 0 : group_.size() + 1);
        changes.push_back({kind,
                           keypath_of(node),
                           group_,
                           std::move(words),
                           std::move(old_value),
                           std::move(new_value),
                           {}});
    }

    /// A node that holds no value came, or went.
    void note_presence(const Pair& pair) {
        if (pair.before == nullptr || pair.after == nullptr) {
            note(pair.before == nullptr ? ChangeKind::added : ChangeKind::removed, pair.either());
        }
    }

    void compare_leaf(const Pair& pair) {
        if (is_key(pair.either())) {
            return;
        }
        const bool is_same = pair.before != nullptr && pair.after != nullptr &&
                             pair.before->text == pair.after->text;
        if (is_same && is_default(*pair.before) == is_default(*pair.after)) {
            return;
        }
        const auto shown = [&](const Node* leaf) {
            return leaf == nullptr ? std::nullopt
                                   : Value(shown_value(*leaf) +
                                           (is_same && is_default(*leaf) ? " (default)" : ""));
        };
        const ChangeKind kind = pair.before == nullptr  ? ChangeKind::added
                                : pair.after == nullptr ? ChangeKind::removed
                                                        : ChangeKind::changed;
        note(kind, pair.either(), shown(pair.before), shown(pair.after));
    }

    void note_moves(const Node& before, const Node& after, const Entries& old_positions) {
        std::vector<std::size_t> common;  // positions after
        std::vector<std::size_t> old;
        for (std::size_t i = 0; i < after.children.size(); ++i) {
            const auto found = old_positions.find(after.children[i]->text);
            if (found != old_positions.end()) {
                common.push_back(i);
                old.push_back(found->second);
            }
        }
        const std::vector<bool> stays = in_longest_increase(old);
        for (std::size_t i = 0; i < common.size(); ++i) {
            if (!stays[i]) {
                note(ChangeKind::moved, *after.children[common[i]], standing(before, old[i]),
                     standing(after, common[i]));
            }
        }
    }

    void compare_entry(const Pair& pair) {
        if (heads_group(pair.either())) {
            groups_.push_back(pair);
        } else {
            note_presence(pair);
        }
    }

    /// What is gone or still there in the old order, then what is new, then what moved.
    void compare_list(const Pair& pair) {
        const Entries old_positions = positions(pair.before);
        const Entries new_positions = positions(pair.after);
        for (const auto& entry : entries_of(pair.before)) {
            compare_entry({entry, entry_at(pair.after, new_positions, *entry)});
        }
        for (const auto& entry : entries_of(pair.after)) {
            if (entry_at(pair.before, old_positions, *entry) == nullptr) {
                compare_entry({nullptr, entry});
            }
        }
        if (pair.before != nullptr && pair.after != nullptr &&
            pair.before->schema->is_ordered_by_user) {
            note_moves(*pair.before, *pair.after, old_positions);
        }
    }

    void compare_node(const Pair& pair) {
        if (pair.before == nullptr && pair.after == nullptr) {
            return;
        }
        switch (pair.either().schema->kind) {
            case NodeKind::leaf:
                return compare_leaf(pair);
            case NodeKind::list:
                return compare_list(pair);
            case NodeKind::container:
                if (is_empty(pair.either())) {
                    note_presence(pair);
                }
                return compare_children(pair);
        }
    }

    void compare_children(const Pair& pair) {
        const auto child = [](const Node* node, std::size_t i) {
            return node == nullptr ? nullptr : node->children[i];
        };
        for (std::size_t i = 0; i < pair.either().children.size(); ++i) {
            compare_node({child(pair.before, i), child(pair.after, i)});
        }
    }

    std::string group_;         ///< of the changes that are noted now
    std::vector<Pair> groups_;  ///< below it, to be compared when it is done
};

}  // namespace

std::vector<Change> difference(const local_platform::DataTree& running,
                               const local_platform::DataTree& candidate) {
    Comparison comparison;
    comparison.compare_group({&running.root(), &candidate.root()});
    return std::move(comparison.changes);
}
