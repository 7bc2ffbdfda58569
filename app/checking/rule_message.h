/// A rule's message, and what the model says about it.
#pragma once

#include <string>

#include "model/yang_schema.h"

/// What to do about `message`, by the first of the use's messages that it fits, a word in angle
/// brackets standing for any text; empty when it fits none.
std::string help_for(const Rule& use, const std::string& message);
