/// printf into a string.
#pragma once

#include <cstdarg>
#include <string>

namespace local_platform {

/// `format` with its arguments, at any length.
std::string format_text(const char* format, va_list arguments);

}  // namespace local_platform
