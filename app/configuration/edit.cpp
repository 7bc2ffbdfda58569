#include "configuration/edit.h"

#include <libyang/libyang.h>

#include <algorithm>
#include <map>
#include <unordered_map>
#include <unordered_set>

#include "configuration/leaf_value.h"
#include "configuration/yang_schema.h"
#include "errors/input_error.h"

namespace {

constexpr std::uint8_t kEdit = 0;  // the sources of the result
constexpr std::uint8_t kRunning = 1;

bool is_key(const DocumentNode& node) {
    return node.schema != nullptr && lysc_is_key(node.schema);
}

bool is_inner(const DocumentNode& node) {
    return (node.schema->nodetype & (LYS_CONTAINER | LYS_LIST)) != 0;
}

bool is_ordered_by_user(const lysc_node& schema) {
    return (schema.nodetype & (LYS_LIST | LYS_LEAFLIST)) != 0 &&
           (schema.flags & LYS_ORDBY_USER) != 0;
}

EditOperation operation_of(const DocumentNode& node, EditOperation inherited) {
    const bool has_own =
        node.attributes != nullptr && node.attributes->operation != EditOperation::inherited;
    return has_own ? node.attributes->operation : inherited;
}

/// The case of a choice that a node is of, for each choice around it below its parent.
std::map<const lysc_node*, const lysc_node*> cases_of(const lysc_node& schema) {
    std::map<const lysc_node*, const lysc_node*> cases;
    for (const lysc_node* step = schema.parent;
         step != nullptr && (step->nodetype & (LYS_CHOICE | LYS_CASE)) != 0; step = step->parent) {
        if (step->nodetype == LYS_CASE) {
            cases[step->parent] = step;
        }
    }
    return cases;
}

/// Whether nodes of the two cannot be there together.
bool excludes(const lysc_node& one, const lysc_node& other) {
    const auto cases = cases_of(one);
    for (const auto& [choice, its_case] : cases.empty() ? cases : cases_of(other)) {
        const auto found = cases.find(choice);
        if (found != cases.end() && found->second != its_case) {
            return true;
        }
    }
    return false;
}

class Editor {
  public:
    Editor(const Document& running, const Document& edit)
        : running_(running), edit_(edit), store_(std::make_shared<NodeStore>()) {}

    Document apply() {
        DocumentNode& root = make_node();
        const bool is_whole = edit_.default_operation == EditOperation::replace;
        if (!is_whole) {
            copy_children(running_.root(), root);
        }
        apply_children(edit_.root(), root, edit_.default_operation, is_whole);
        sweep(root);
        Document result({edit_.sources().front(), running_.sources().front()}, &root, store_);
        result.envelope = running_.envelope;
        result.unknown_data = running_.unknown_data;
        result.unknown_data.add(edit_.unknown_data);
        result.unmerged = unmerged_;
        return result;
    }

  private:
    using Entries = std::unordered_map<std::string, DocumentNode*>;

    DocumentNode& make_node() {
        return *new (store_->arena.allocate(sizeof(DocumentNode), alignof(DocumentNode)))
            DocumentNode();
    }

    DocumentNode& copy_of(const DocumentNode& from, DocumentNode& parent, std::uint8_t source) {
        DocumentNode& node = make_node();
        node = from;
        node.parent = &parent;
        node.source = source;
        node.first_child = node.last_child = node.next = nullptr;
        return node;
    }

    static void append(DocumentNode& parent, DocumentNode& node) {
        (parent.last_child == nullptr ? parent.first_child : parent.last_child->next) = &node;
        parent.last_child = &node;
    }

    void copy_children(const DocumentNode& from, DocumentNode& to) {
        for (const DocumentNode* child = from.first_child; child != nullptr; child = child->next) {
            DocumentNode& copy = copy_of(*child, to, kRunning);
            append(to, copy);
            copy_children(*child, copy);
        }
    }

    // What is there

    bool is_there(const DocumentNode& node) const { return removed_.count(&node) == 0; }

    /// A holder is there when it holds something, every other node when the document has it.
    bool exists(const DocumentNode* node) const {
        if (node == nullptr || !is_nonpresence_container(*node->schema)) {
            return node != nullptr;
        }
        for (const DocumentNode* child = node->first_child; child != nullptr; child = child->next) {
            if (is_there(*child) && (child->is_skipped() || exists(child))) {
                return true;
            }
        }
        return false;
    }

    /// The keys of an entry, or the value of a leaf-list's, each way of writing them the same.
    static std::string identity_of(const DocumentNode& node) {
        if (node.schema->nodetype == LYS_LEAFLIST) {
            return canonical_value(*node.schema, node.text);
        }
        std::string identity;
        for (const lysc_node* key = lysc_node_child(node.schema);
             key != nullptr && lysc_is_key(key); key = key->next) {
            const DocumentNode* const leaf = node.child(key);
            identity += leaf == nullptr ? "" : canonical_value(*key, leaf->text);
            identity += '\0';
        }
        return identity;
    }

    Entries& entries_of(const DocumentNode& parent, const lysc_node& schema) {
        const auto [found, is_new] = entries_.try_emplace({&parent, &schema});
        if (is_new) {
            for (DocumentNode* node = parent.first_child; node != nullptr; node = node->next) {
                if (node->schema == &schema && is_there(*node)) {
                    found->second.emplace(identity_of(*node), node);
                }
            }
        }
        return found->second;
    }

    /// What `node` of the edit means below `parent`; null when that is not there.
    DocumentNode* counterpart(const DocumentNode& node, DocumentNode& parent) {
        if ((node.schema->nodetype & (LYS_LIST | LYS_LEAFLIST)) != 0) {
            const Entries& entries = entries_of(parent, *node.schema);
            const auto found = entries.find(identity_of(node));
            return found == entries.end() ? nullptr : found->second;
        }
        for (DocumentNode* child = parent.first_child; child != nullptr; child = child->next) {
            if (child->schema == node.schema && is_there(*child)) {
                return child;
            }
        }
        return nullptr;
    }

    // Changes

    void remove(DocumentNode& node) {
        if (node.schema != nullptr && (node.schema->nodetype & (LYS_LIST | LYS_LEAFLIST)) != 0) {
            entries_of(*node.parent, *node.schema).erase(identity_of(node));
        }
        removed_.insert(&node);
    }

    /// Takes what was removed out of the lists of children.
    void sweep(DocumentNode& parent) {
        DocumentNode** link = &parent.first_child;
        parent.last_child = nullptr;
        while (*link != nullptr) {
            DocumentNode& child = **link;
            if (!is_there(child)) {
                *link = child.next;
                continue;
            }
            sweep(child);
            parent.last_child = &child;
            link = &child.next;
        }
    }

    /// Setting a node of one case of a choice removes those of every other (RFC 7950, section 7.9).
    void remove_other_cases(const DocumentNode& node, DocumentNode& parent) {
        if (node.schema->parent == nullptr || node.schema->parent->nodetype != LYS_CASE) {
            return;
        }
        for (DocumentNode* other = parent.first_child; other != nullptr; other = other->next) {
            if (other->schema == nullptr || !is_there(*other) ||
                !excludes(*node.schema, *other->schema)) {
                continue;
            }
            if (touched_.count(other) > 0) {
                refuse(node, std::string(node.schema->name) + " and " + other->schema->name +
                                 " belong to two cases of a choice; give only one of them");
            }
            remove(*other);
        }
    }

    /// From now on `target` is where `node` of the edit is.
    void point_to_edit(DocumentNode& target, const DocumentNode& node) {
        if (!touched_.insert(&target).second) {
            refuse(node, describe(node) + " is given twice in the edit; give it once");
        }
        target.offset = node.offset;
        target.source = kEdit;
        if (node.attributes != nullptr && !node.attributes->annotations.empty()) {
            target.attributes = node.attributes;
        }
        for (const DocumentNode* key = node.first_child; key != nullptr; key = key->next) {
            auto* const own =
                is_key(*key) ? const_cast<DocumentNode*>(target.child(key->schema)) : nullptr;
            if (own != nullptr) {
                own->offset = key->offset;
                own->source = kEdit;
            }
        }
    }

    DocumentNode& create(const DocumentNode& node, DocumentNode& parent) {
        DocumentNode& made = copy_of(node, parent, kEdit);
        for (const DocumentNode* key = node.first_child; key != nullptr; key = key->next) {
            if (is_key(*key)) {
                append(made, copy_of(*key, made, kEdit));
            }
        }
        append(parent, made);
        if ((node.schema->nodetype & (LYS_LIST | LYS_LEAFLIST)) != 0) {
            entries_of(parent, *node.schema)[identity_of(node)] = &made;
        }
        return made;
    }

    void apply_children(const DocumentNode& from, DocumentNode& to, EditOperation inherited,
                        bool is_fresh) {
        for (const DocumentNode* node = from.first_child; node != nullptr; node = node->next) {
            if (node->is_skipped()) {
                apply_skipped(*node, to, is_fresh);
            } else if (!is_key(*node)) {
                apply_node(*node, to, operation_of(*node, inherited), is_fresh);
            } else if (operation_of(*node, EditOperation::inherited) != EditOperation::inherited) {
                refuse(*node,
                       std::string(node->schema->name) +
                           " is a key and has no operation of its own; write it at the entry");
            }
        }
    }

    /// Data without its module can be put where nothing is, and cannot be merged.
    void apply_skipped(const DocumentNode& node, DocumentNode& to, bool is_fresh) {
        if (is_fresh && node.text.find("operation=") == std::string_view::npos) {
            append(to, copy_of(node, to, kEdit));
        } else if (!unmerged_.is_known()) {
            unmerged_ = edit_.location_of(node);
        }
    }

    void apply_node(const DocumentNode& node, DocumentNode& parent, EditOperation operation,
                    bool is_fresh) {
        require_keys(node);
        DocumentNode* target = counterpart(node, parent);
        switch (operation) {
            case EditOperation::delete_:
            case EditOperation::remove:
                if (exists(target)) {
                    remove(*target);
                } else if (operation == EditOperation::delete_) {
                    refuse(node, "data-missing: " + describe(node) + " is not in " +
                                     running_.name() + "; write remove, or leave it out");
                }
                return;
            case EditOperation::none:
                return leave(node, parent, target);
            case EditOperation::create:
                if (exists(target)) {
                    refuse(node, "data-exists: " + describe(node) + " is in " + running_.name() +
                                     " already; write merge or replace");
                }
                break;
            default:
                break;
        }
        remove_other_cases(node, parent);
        const bool is_new = target == nullptr;
        if (is_new) {
            target = &create(node, parent);
        }
        point_to_edit(*target, node);
        place(node, *target);
        if (!is_inner(node)) {
            target->text = node.text;
            target->kind = node.kind;
            return;
        }
        if (!is_new && operation == EditOperation::replace) {
            clear(*target);
        }
        const bool is_empty = is_fresh || is_new || operation == EditOperation::replace;
        apply_children(node, *target, operation, is_empty);
    }

    /// The default operation "none" changes nothing itself, and must not make what is not there.
    void leave(const DocumentNode& node, DocumentNode& parent, DocumentNode* target) {
        const bool is_new = target == nullptr;
        if (is_new && !is_nonpresence_container(*node.schema)) {
            refuse(node, "data-missing: " + describe(node) + " is not in " + running_.name() +
                             ", and the default operation is none; write an operation");
        }
        target = is_new ? &create(node, parent) : target;
        point_to_edit(*target, node);
        apply_children(node, *target, EditOperation::none, false);
        if (is_new && !exists(target)) {
            remove(*target);
        }
    }

    void clear(DocumentNode& node) {
        for (DocumentNode* child = node.first_child; child != nullptr; child = child->next) {
            if (!is_key(*child) && is_there(*child)) {
                remove(*child);
            }
        }
    }

    /// Moves `target` where the insertion attributes of `node` say.
    void place(const DocumentNode& node, DocumentNode& target) {
        const Insertion insertion =
            node.attributes == nullptr ? Insertion::unset : node.attributes->insertion;
        if (insertion == Insertion::unset) {
            return;  // a new entry is the last one
        }
        if (!is_ordered_by_user(*node.schema)) {
            refuse(node, describe(node) + " has a position, and the order of " + node.schema->name +
                             " is up to the system; remove insert");
        }
        DocumentNode* anchor = nullptr;
        if (insertion == Insertion::before || insertion == Insertion::after) {
            anchor = &anchor_of(node, *target.parent);
            if (anchor == &target) {
                return;
            }
        }
        DocumentNode& parent = *target.parent;
        unlink(parent, target);
        DocumentNode** link = &parent.first_child;
        if (insertion == Insertion::first) {
            while (*link != nullptr && ((*link)->schema != node.schema || !is_there(**link))) {
                link = &(*link)->next;
            }
        } else if (anchor != nullptr) {
            while (*link != anchor) {
                link = &(*link)->next;
            }
            link = insertion == Insertion::after ? &anchor->next : link;
        } else {
            while (*link != nullptr) {
                link = &(*link)->next;
            }
        }
        target.next = *link;
        *link = &target;
        if (target.next == nullptr) {
            parent.last_child = &target;
        }
    }

    static void unlink(DocumentNode& parent, DocumentNode& node) {
        DocumentNode* previous = nullptr;
        DocumentNode** link = &parent.first_child;
        while (*link != &node) {
            previous = *link;
            link = &previous->next;
        }
        *link = node.next;
        if (parent.last_child == &node) {
            parent.last_child = previous;
        }
    }

    /// The entry that the `key` or `value` of `node` names.
    DocumentNode& anchor_of(const DocumentNode& node, DocumentNode& parent) {
        const std::string_view anchor = node.attributes->anchor;
        const bool is_list = node.schema->nodetype == LYS_LIST;
        if (!is_list) {
            const Entries& entries = entries_of(parent, *node.schema);
            const auto found = entries.find(canonical_value(*node.schema, anchor));
            if (found != entries.end()) {
                return *found->second;
            }
        }
        const std::string step = node.schema->name + std::string(anchor);
        const DocumentNode* found = is_list ? find_among(parent.first_child, step) : nullptr;
        while (found != nullptr && !is_there(*found)) {
            found = find_among(found->next, step);
        }
        if (found == nullptr || anchor.empty()) {
            refuse(node, "missing-instance: " + describe(node) + " is to be placed next to \"" +
                             std::string(anchor) +
                             "\", which does not exist; name an existing entry with " +
                             (is_list ? "key" : "value"));
        }
        return const_cast<DocumentNode&>(*found);
    }

    // Errors

    void require_keys(const DocumentNode& node) const {
        if (node.schema->nodetype != LYS_LIST) {
            return;
        }
        for (const lysc_node* key = lysc_node_child(node.schema);
             key != nullptr && lysc_is_key(key); key = key->next) {
            if (node.child(key) == nullptr) {
                refuse(node, std::string(node.schema->name) + " has no " + key->name +
                                 ", which is one of its keys; add it");
            }
        }
    }

    /// The way to `node` in words: "router vrrp interface l3-a".
    static std::string describe(const DocumentNode& node) {
        if (node.schema == nullptr) {
            return {};
        }
        std::string words = describe(*node.parent);
        words += (words.empty() ? "" : " ") + std::string(node.schema->name);
        for (const DocumentNode* key = node.first_child; key != nullptr; key = key->next) {
            words += is_key(*key) ? " " + std::string(key->text) : "";
        }
        return node.schema->nodetype == LYS_LEAFLIST ? words + " " + std::string(node.text) : words;
    }

    [[noreturn]] void refuse(const DocumentNode& node, const std::string& what_is_wrong) const {
        throw InputError(edit_.location_of(node), what_is_wrong);
    }

    struct PairHash {
        std::size_t operator()(const std::pair<const DocumentNode*, const lysc_node*>& key) const {
            return std::hash<const void*>()(key.first) * 31 + std::hash<const void*>()(key.second);
        }
    };

    const Document& running_;
    const Document& edit_;
    std::shared_ptr<NodeStore> store_;
    std::unordered_map<std::pair<const DocumentNode*, const lysc_node*>, Entries, PairHash>
        entries_;
    std::unordered_set<const DocumentNode*> removed_;
    std::unordered_set<const DocumentNode*> touched_;  ///< by a node of the edit
    Location unmerged_;
};

}  // namespace

Document apply_edit(const Document& running, const Document& edit) {
    return Editor(running, edit).apply();
}
