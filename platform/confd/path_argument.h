/// A path given as a printf format and its arguments.
#pragma once

#include <cstdarg>
#include <string>
#include <string_view>

#include "format_text.h"

namespace local_platform {

/// The formatted path. A plain "%s" is taken as it stands, without a copy, so the argument must
/// outlive the object.
class PathArgument {
  public:
    PathArgument(const char* format, va_list arguments) {
        const bool is_plain = format[0] == '%' && format[1] == 's' && format[2] == '\0';
        if (!is_plain) {
            formatted_ = format_text(format, arguments);
        }
        text_ = is_plain ? std::string_view(va_arg(arguments, const char*)) : formatted_;
    }
    PathArgument(const PathArgument&) = delete;
    PathArgument& operator=(const PathArgument&) = delete;

    std::string_view text() const { return text_; }

  private:
    std::string formatted_;
    std::string_view text_;
};

}  // namespace local_platform

/// Declares `path`, the path that a variadic operation was given behind its parameter `fmt`. A
/// macro, since only the operation itself can take its arguments.
#define TAKE_PATH(path, fmt)                                        \
    va_list path##_arguments;                                       \
    va_start(path##_arguments, fmt);                                \
    const local_platform::PathArgument path(fmt, path##_arguments); \
    va_end(path##_arguments)
