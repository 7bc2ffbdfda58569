/// Why several rules fail at once.
#pragma once

#include "checking/report.h"
#include "data_tree.h"

/// Fills the cause of every finding that names a layer-3 interface which `candidate` does not hold,
/// with the name nearest to it.
void find_missing_interfaces(const local_platform::DataTree& candidate, Report& report);
