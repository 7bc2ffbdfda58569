/// Where other modules use the statements of the module validation-point.
#pragma once

#include <string>

/// Throws InputError, naming file and line, when the module text in `file` uses a validation point
/// anywhere but directly in a container, a list or a leaf: under `refine`, `augment` or `deviation`
/// the YANG library applies such statements in part, and without what they hold.
void require_plain_uses(const std::string& file);
