/// A path given as a printf format and its arguments.
#pragma once

#include <cstdarg>
#include <string>
#include <string_view>

namespace local_platform {

/// The formatted path. A plain "%s" is taken as it stands, without a copy, so the argument must
/// outlive the object.
class PathArgument {
  public:
    PathArgument(const char* format, va_list arguments);
    PathArgument(const PathArgument&) = delete;
    PathArgument& operator=(const PathArgument&) = delete;

    std::string_view text() const { return text_; }

  private:
    std::string formatted_;
    std::string_view text_;
};

/// `format` with its arguments, at any length.
std::string format_text(const char* format, va_list arguments);

}  // namespace local_platform
