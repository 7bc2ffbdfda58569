/// What libyang noted when it refused something.
#pragma once

#include <string>

struct ly_ctx;
struct ly_err_item;

/// The first error that `context` noted since its errors were last cleared; null without one. The
/// later ones follow from it, and a warning is not why it refused.
const ly_err_item* first_error(const ly_ctx& context);

/// What was refused in a module's `file`: with the line and the node where there are any.
std::string schema_error(const ly_ctx& context, const std::string& file);
