#include "path_argument.h"

#include <cstdio>
#include <cstring>

namespace local_platform {

PathArgument::PathArgument(const char* format, va_list arguments) {
    if (std::strcmp(format, "%s") == 0) {
        text_ = va_arg(arguments, const char*);
        return;
    }
    formatted_ = format_text(format, arguments);
    text_ = formatted_;
}

std::string format_text(const char* format, va_list arguments) {
    va_list measured;
    va_copy(measured, arguments);
    const int length = std::vsnprintf(nullptr, 0, format, measured);
    va_end(measured);
    if (length < 0) {
        return {};
    }
    std::string text(static_cast<std::size_t>(length), '\0');
    static_cast<void>(std::vsnprintf(text.data(), text.size() + 1, format, arguments));
    return text;
}

}  // namespace local_platform
