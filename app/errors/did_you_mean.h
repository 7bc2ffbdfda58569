/// What somebody meant who mistyped a name.
#pragma once

#include <string>
#include <string_view>
#include <vector>

/// The one of `names` that takes the fewest changed, added or left out letters to become
/// `given`, or one of which `given` is a part between underscores; empty when none is near.
std::string nearest_name(std::string_view given, const std::vector<std::string>& names);

/// " (did you mean \"check\"?)", or nothing, for a message about `given`.
std::string did_you_mean(std::string_view given, const std::vector<std::string>& names);
