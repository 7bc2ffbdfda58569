/// What changes from one configuration to another.
#pragma once

#include <optional>
#include <string>
#include <vector>

#include "data_tree.h"
#include "errors/location.h"

enum class ChangeKind { added, removed, changed, moved };

/// What an encrypted leaf's values are shown as.
constexpr const char* kSecretValue = "(secret)";
/// What the content of anydata is shown as.
constexpr const char* kDataValue = "(data)";

/// One node that differs. A list entry and every leaf below it that comes or goes are a change
/// each; an entry's key leaves are part of the entry.
struct Change {
    ChangeKind kind = ChangeKind::changed;
    std::string path;  ///< as keypath printing gives it
    /// The layer-3 interface, the VRRP instance or whatever entry with content of its own it
    /// belongs to, in the operator's words; empty outside of all.
    std::string group;
    std::string node;  ///< the way to it from the group; empty for the group's entry itself
    /// A leaf's value in the running configuration, followed by " (default)" where only one of the
    /// two configurations leaves it to the model and both have it; of a moved entry, which one it
    /// came after, as "after b", or "first".
    std::optional<std::string> old_value;
    std::optional<std::string> new_value;  ///< the same in the candidate
    Location location;                     ///< of the node, where it is known
};

/// The changes from `running` to `candidate`, two trees of one model: those of a group one after
/// the other, its entry first, and groups of an entry behind what is the entry's own. The order of
/// entries counts in lists that the model has ordered by user, and in no others.
std::vector<Change> difference(const local_platform::DataTree& running,
                               const local_platform::DataTree& candidate);
