/// A path given as a printf format and its arguments.
#pragma once

#include <cstdarg>
#include <cstring>
#include <string>
#include <string_view>

#include "format_text.h"

namespace local_platform {

/// The formatted path. A plain "%s" is taken as it is, without a copy, so the argument must
/// outlive the object.
class PathArgument {
  public:
    PathArgument(const char* format, va_list arguments) {
        if (std::strcmp(format, "%s") == 0) {
            text_ = va_arg(arguments, const char*);
        } else {
            formatted_ = format_text(format, arguments);
            text_ = formatted_.c_str();
        }
    }
    PathArgument(const PathArgument&) = delete;
    PathArgument& operator=(const PathArgument&) = delete;

    const char* c_str() const { return text_; }
    operator std::string_view() const { return text_; }

  private:
    std::string formatted_;
    const char* text_;
};

}  // namespace local_platform

/// Declares `path`, the path that a variadic operation was given behind its parameter `fmt`. A
/// macro, since only the operation itself can take its arguments.
#define TAKE_PATH(path, fmt)                                        \
    va_list path##_arguments;                                       \
    va_start(path##_arguments, fmt);                                \
    const local_platform::PathArgument path(fmt, path##_arguments); \
    va_end(path##_arguments)
