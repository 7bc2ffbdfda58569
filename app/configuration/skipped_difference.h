/// What changes in the data that no module describes.
#pragma once

#include <vector>

#include "configuration/difference.h"
#include "configuration/document.h"

/// Adds to `changes` one for each piece of `running`, which may be null, and `candidate` that a
/// check skips and that came, went or differs. How a piece is laid out does not count; whether two
/// of different formats are the same cannot be told, so they count as two.
void add_skipped_changes(const Document* running, const Document& candidate,
                         std::vector<Change>& changes);
