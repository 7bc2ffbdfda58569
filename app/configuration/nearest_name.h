/// What somebody may have meant who mistyped a name.
#pragma once

#include <string>
#include <string_view>
#include <vector>

/// The name in `known` that takes the fewest edits to make of `mistyped`; empty when every one
/// takes more than a third of its letters.
std::string nearest_name(std::string_view mistyped, const std::vector<std::string>& known);
