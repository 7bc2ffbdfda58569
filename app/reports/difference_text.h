/// A difference for a reader.
#pragma once

#include <string>
#include <vector>

#include "trees/difference.h"

/// How a kind of change is shown.
struct ChangeLook {
    const char* mark;    ///< "+ ", "- " or "~ "
    const char* colour;  ///< a terminal's escape sequence
    const char* word;
};

const ChangeLook& look_of(ChangeKind kind);

/// A line of a difference. All of it is printable.
struct ChangeLine {
    const ChangeLook* look;  ///< null for the mere name of a group
    std::size_t depth;  ///< 0 for what has no group, 1 for the name of one, 2 for what is in it
    std::string text;
    bool is_alone = false;  ///< in no group
};

/// The changes below their layer-3 interface or VRRP instance; what comes and goes as a whole says
/// so in the line that names it.
std::vector<ChangeLine> difference_lines(const std::vector<Change>& changes);

/// The same as text, with escape sequences when `colour`; nothing for no changes.
std::string format_difference_text(const std::vector<Change>& changes, bool colour);
