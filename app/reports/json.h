/// JSON as the reports write it.
#pragma once

#include <nlohmann/json.hpp>

#include "configuration/difference.h"

// Ordered, so that an object reads in the order in which it is described.
using Json = nlohmann::ordered_json;

/// A change with its kind, path, group, place, and the old and new value where there are any.
Json to_json(const Change& change);
/// The change that to_json() has written. Throws Json::exception for anything else.
Change change_from_json(const Json& json);
