/// A path given as a printf format and its arguments.
#pragma once

#include <cstdarg>
#include <memory>
#include <string>
#include <string_view>

#include "format_text.h"

namespace local_platform {

/// The formatted path. A plain "%s" is taken as it is, without a copy, so the argument must
/// outlive the object.
class PathArgument {
  public:
    PathArgument(const char* format, va_list arguments) {
        const bool is_plain = format[0] == '%' && format[1] == 's' && format[2] == '\0';
        if (!is_plain) {
            formatted_ = std::make_unique<std::string>(format_text(format, arguments));
        }
        text_ = is_plain ? va_arg(arguments, const char*) : formatted_->c_str();
    }

    const char* c_str() const { return text_; }
    operator std::string_view() const { return text_; }

  private:
    std::unique_ptr<const std::string> formatted_;
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
