#include "configuration/edit.h"

#include <libyang/libyang.h>

#include <algorithm>

#include "model/leaf_value.h"
#include "model/yang_schema.h"

namespace {

constexpr std::size_t kEdit = 0;  // the sources
constexpr std::size_t kRunning = 1;

bool is_edited(const lyd_node& node) {
    return origin_of(reinterpret_cast<std::uintptr_t>(node.priv)).source == kEdit;
}

bool is_list(const lysc_node& schema) {
    return (schema.nodetype & (LYS_LIST | LYS_LEAFLIST)) != 0;
}

/// A container without presence is there when it holds something, every other node when the tree
/// has it.
bool exists(const lyd_node* node) {
    if (node == nullptr || !is_nonpresence_container(*node->schema)) {
        return node != nullptr;
    }
    const lyd_node* child = lyd_child(node);
    while (child != nullptr && !exists(child)) {
        child = child->next;
    }
    return child != nullptr;
}

/// The case of `choice` that `node` is of; null when it is of none.
const lysc_node* case_in(const lysc_node& choice, const lysc_node& node) {
    const lysc_node* step = &node;
    while (step != nullptr && step->parent != &choice) {
        step = step->parent;
    }
    return step;
}

/// Whether nodes of the two cannot be there together: they are of two cases of a choice.
bool excludes(const lysc_node& one, const lysc_node& other) {
    for (const lysc_node* step = one.parent;
         step != nullptr && (step->nodetype & (LYS_CHOICE | LYS_CASE)) != 0; step = step->parent) {
        const lysc_node* const its = step->nodetype == LYS_CHOICE ? case_in(*step, one) : nullptr;
        const lysc_node* const others = its == nullptr ? nullptr : case_in(*step, other);
        if (others != nullptr && others != its) {
            return true;
        }
    }
    return false;
}

}  // namespace

Edit::Edit(const Sources& sources, DataForest& tree, EditOperation default_operation)
    : sources_(sources), maker_(sources), tree_(tree) {
    levels_.emplace_back();
    levels_.back().operation = default_operation;
}

void Edit::open(const FileNode& node, const std::vector<FileNode>& keys) {
    Level level = level_of(node, keys);
    if (!level.is_removed) {
        apply(level, keys);
    }
    const bool is_new = level.target == nullptr && !level.is_removed;
    if (is_new && !is_nonpresence_container(*node.schema)) {
        level.target = make(level, keys);
    } else if (level.target != nullptr && level.operation == EditOperation::replace) {
        clear(*level.target);
    }
    if (!level.is_removed) {
        place(level);
    }
    levels_.push_back(std::move(level));
}

void Edit::add(const FileNode& node) {
    Level level = level_of(node, {});
    if (level.is_removed) {
        return;
    }
    apply(level, {});
    if (level.is_removed || level.operation == EditOperation::none) {
        return;
    }
    lyd_node* const old = level.target;
    if (old == nullptr || !is_list(*node.schema)) {
        level.target = make(level, {});
        if (old != nullptr) {
            tree_.remove(old);
        }
    }
    place(level);
}

Edit::Level Edit::level_of(const FileNode& node, const std::vector<FileNode>& keys) {
    const Level& around = levels_.back();
    Level level{node, around.words, around.operation, nullptr, around.is_removed};
    level.words += (level.words.empty() ? "" : " ") + std::string(node.schema->name);
    for (const FileNode& key : keys) {
        level.words.append(" ").append(key.text);
    }
    level.node.origin = keys.empty() ? node.origin : keys.front().origin;
    if (node.schema->nodetype == LYS_LEAFLIST) {
        level.words.append(" ").append(node.text);
    }
    for (const FileNode& key : keys) {
        if (key.attributes != nullptr && key.attributes->operation != EditOperation::inherited) {
            maker_.refuse(key, std::string(key.schema->name) +
                                   " is a key and has no operation of its own; write it at the "
                                   "entry");
        }
    }
    if (node.attributes != nullptr && node.attributes->operation != EditOperation::inherited) {
        level.operation = node.attributes->operation;
    }
    return level;
}

/// What `node` means in the tree; null when that is not there.
lyd_node* Edit::find(const FileNode& node, const std::vector<FileNode>& keys) {
    const Level& around = levels_.back();
    if (levels_.size() > 1 && around.target == nullptr) {
        return nullptr;
    }
    const lyd_node* const siblings = tree_.first_below(around.target);
    lyd_node* found = nullptr;
    if (node.schema->nodetype == LYS_LIST) {
        const auto entry = maker_.make_entry(around.target, node, keys);
        lyd_find_sibling_first(siblings, entry.get(), &found);
        return found;
    }
    const std::string value(node.text);
    const bool is_leaf_list = node.schema->nodetype == LYS_LEAFLIST;
    lyd_find_sibling_val(siblings, node.schema, is_leaf_list ? value.c_str() : nullptr, 0, &found);
    return found;
}

/// Finds the target of `level`, and does with it what the operation says, as far as nothing has to
/// be made for that.
void Edit::apply(Level& level, const std::vector<FileNode>& keys) {
    level.target = find(level.node, keys);
    const bool is_there = exists(level.target);
    const std::string running = sources_[kRunning]->name();
    switch (level.operation) {
        case EditOperation::delete_:
        case EditOperation::remove:
            if (is_there) {
                tree_.remove(level.target);
            } else if (level.operation == EditOperation::delete_) {
                refuse(level, "data-missing: " + level.words + " is not in " + running +
                                  "; write remove, or leave it out");
            }
            level.target = nullptr;
            level.is_removed = true;
            return;
        case EditOperation::none:
            if (level.target == nullptr && !is_nonpresence_container(*level.node.schema)) {
                refuse(level, "data-missing: " + level.words + " is not in " + running +
                                  ", and the default operation is none; write an operation");
            }
            break;
        case EditOperation::create:
            if (is_there) {
                refuse(level, "data-exists: " + level.words + " is in " + running +
                                  " already; write merge or replace");
            }
            break;
        default:
            break;
    }
    if (level.target != nullptr) {
        touch(level, keys);
    }
}

/// From now on the target of `level` was read in the edit.
void Edit::touch(const Level& level, const std::vector<FileNode>& keys) const {
    if (is_edited(*level.target)) {
        refuse(level, level.words + " is given twice in the edit; give it once");
    }
    level.target->priv = reinterpret_cast<void*>(mark_of(level.node.origin));
    lyd_node* own = lyd_child(level.target);
    for (const FileNode& key : keys) {
        own->priv = reinterpret_cast<void*>(mark_of(key.origin));
        own = own->next;
    }
}

/// Makes the node of `level`, and first the containers around it that are not there.
lyd_node* Edit::make(const Level& level, const std::vector<FileNode>& keys) {
    lyd_node* parent = nullptr;
    for (std::size_t i = 1; i < levels_.size(); ++i) {
        if (levels_[i].target == nullptr) {
            remove_other_cases(levels_[i].node, parent);
            levels_[i].target = maker_.make(tree_, parent, levels_[i].node);
        }
        parent = levels_[i].target;
    }
    remove_other_cases(level.node, parent);
    return maker_.make(tree_, parent, level.node, keys);
}

/// Setting a node of one case of a choice removes those of every other (RFC 7950, section 7.9).
void Edit::remove_other_cases(const FileNode& node, lyd_node* parent) {
    if (node.schema->parent == nullptr || node.schema->parent->nodetype != LYS_CASE) {
        return;
    }
    lyd_node* next = nullptr;
    for (lyd_node* other = tree_.first_below(parent); other != nullptr; other = next) {
        next = other->next;
        if (!excludes(*node.schema, *other->schema)) {
            continue;
        }
        if (is_edited(*other)) {
            maker_.refuse(node, std::string(node.schema->name) + " and " + other->schema->name +
                                    " belong to two cases of a choice; give only one of them");
        }
        tree_.remove(other);
    }
}

void Edit::clear(lyd_node& entry) {
    lyd_node* next = nullptr;
    for (lyd_node* child = lyd_child(&entry); child != nullptr; child = next) {
        next = child->next;
        if (!lysc_is_key(child->schema)) {
            tree_.remove(child);
        }
    }
}

/// Moves the target of `level` where the insertion attributes say. A new entry is the last one.
void Edit::place(const Level& level) {
    const auto& attributes = level.node.attributes;
    if (attributes == nullptr || attributes->insertion == Insertion::unset) {
        return;
    }
    const lysc_node& schema = *level.node.schema;
    if (!is_list(schema) || (schema.flags & LYS_ORDBY_USER) == 0) {
        refuse(level, level.words + " has a position, and the order of " + schema.name +
                          " is up to the system; remove insert");
    }
    const lyd_node* const siblings = lyd_first_sibling(level.target);
    lyd_node* anchor = nullptr;
    switch (attributes->insertion) {
        case Insertion::first:
            lyd_find_sibling_val(siblings, &schema, nullptr, 0, &anchor);
            break;
        case Insertion::last:
            for (anchor = level.target; anchor->next != nullptr && anchor->next->schema == &schema;
                 anchor = anchor->next) {
            }
            break;
        default:
            anchor = anchor_of(level);
    }
    if (anchor == level.target) {
        return;
    }
    const bool is_before =
        attributes->insertion == Insertion::first || attributes->insertion == Insertion::before;
    is_before ? lyd_insert_before(anchor, level.target) : lyd_insert_after(anchor, level.target);
}

/// The entry that the `key` or `value` of `level` names.
lyd_node* Edit::anchor_of(const Level& level) {
    FileNode named = level.node;
    std::vector<FileNode> keys;
    std::string shown;
    for (const auto& [name, value] : level.node.attributes->anchor) {
        shown.append(shown.empty() ? "" : " ").append(value);
        named.text = value;
        keys.push_back(named);
        keys.back().schema =
            lys_find_child(named.schema, named.schema->module, name.c_str(), 0, 0, 0);
    }
    const bool is_list = level.node.schema->nodetype == LYS_LIST;
    std::sort(keys.begin(), keys.end(), [](const FileNode& one, const FileNode& other) {
        return key_position(*one.schema) < key_position(*other.schema);
    });
    bool is_whole = keys.size() == (is_list ? key_count(*level.node.schema) : 1);
    for (std::size_t i = 0; is_list && is_whole && i < keys.size(); ++i) {
        is_whole = key_position(*keys[i].schema) == i;
    }
    lyd_node* const found =
        is_whole ? find(named, is_list ? keys : std::vector<FileNode>()) : nullptr;
    if (found == nullptr || found == level.target) {
        refuse(level, "missing-instance: " + level.words + " is to be placed next to \"" + shown +
                          "\", which is no other entry; name an existing one with " +
                          (is_list ? "key, which has all keys" : "value"));
    }
    return found;
}

void Edit::refuse(const Level& level, const std::string& what_is_wrong) const {
    maker_.refuse(level.node, what_is_wrong);
}
