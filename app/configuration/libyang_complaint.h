/// What libyang has to say when it refuses something.
#pragma once

#include <string>

struct ly_ctx;

/// The first error that `context` noted since its errors were last cleared, for the file `file`:
/// with the line and the node where there are any. The later ones follow from it.
std::string first_complaint(const ly_ctx* context, const std::string& file);
