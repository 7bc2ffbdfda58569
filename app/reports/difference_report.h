/// A difference as the operator or a program reads it.
#pragma once

#include <string>
#include <vector>

#include "configuration/difference.h"

/// How a kind of change is shown.
struct ChangeLook {
    const char* mark;    ///< "+ ", "- " or "~ "
    const char* colour;  ///< a terminal's escape sequence
    const char* word;
};

const ChangeLook& look_of(ChangeKind kind);

/// What follows the node of `change`: " 120 → 150".
std::string values_of(const Change& change);

/// Whether `change`, before `next`, has nothing to say of its own: an entry that comes or goes only
/// with entries below it.
bool is_told_below(const Change& change, const Change& next);

/// For a reader: the changes below their layer-3 interface or VRRP instance, one a line; what comes
/// and goes as a whole says so in the line that names it. With escape sequences when `colour`.
/// Nothing for no changes.
std::string format_difference_text(const std::vector<Change>& changes, bool colour);

/// One JSON object: running, candidate, and the changes, each with kind, path, place, and the old
/// and the new value where there is one.
std::string format_difference_json(const std::string& running, const std::string& candidate,
                                   const std::vector<Change>& changes);
