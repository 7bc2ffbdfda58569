/// Where what a check found stands in the files.
#pragma once

#include "checking/report.h"
#include "configuration/document.h"

/// Fills in the places of the findings of `report` and of the values that they compare. `running`
/// is null for an empty running configuration.
void locate(Report& report, const Document& candidate, const Document* running);
