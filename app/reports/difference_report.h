/// A difference as the operator or a program reads it.
#pragma once

#include <string>
#include <vector>

#include "configuration/difference.h"

/// For a reader: the changes below their layer-3 interface or VRRP instance, one a line; what comes
/// and goes as a whole says so in the line that names it. With escape sequences when `colour`.
/// Nothing for no changes.
std::string format_difference_text(const std::vector<Change>& changes, bool colour);

/// One JSON object: running, candidate, and the changes, each with kind, path, place, and the old
/// and the new value where there is one.
std::string format_difference_json(const std::string& running, const std::string& candidate,
                                   const std::vector<Change>& changes);
