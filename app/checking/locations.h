/// Where in the files the findings of a check are.
#pragma once

#include "checking/report.h"
#include "configuration/document.h"

/// Fills in the places of the findings of `report` and of the values that they compare. `running`
/// is null for an empty running configuration.
void locate(Report& report, const Document& candidate, const Document* running);
