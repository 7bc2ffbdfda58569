/// A configuration's text that may be shown.
#pragma once

#include <string>

#include "configuration/source_text.h"
#include "schema_node.h"

/// `text`, JSON or XML, with the value of every leaf masked whose name is that of an encrypted leaf
/// in `schema`: what was typed there in clear must not go round. Lines and columns stay.
std::string masked_text(std::string text, const local_platform::SchemaNode& schema);
