/// JSON as the reports write it.
#pragma once

#include <nlohmann/json.hpp>

#include "configuration/difference.h"

// Ordered, so that an object reads in the order in which it is described.
using Json = nlohmann::ordered_json;

/// A change with its kind, path, place, and the old and new value where there are any.
Json to_json(const Change& change);
