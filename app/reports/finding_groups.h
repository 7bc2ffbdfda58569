/// Findings that have their cause in common, together.
#pragma once

#include <string>
#include <vector>

#include "checking/report.h"

struct FindingGroup {
    std::string cause;  ///< empty for a finding by itself
    std::vector<const Finding*> findings;
};

/// The findings of `report`, in the order in which each block's first one was found.
std::vector<FindingGroup> finding_groups(const Report& report);
