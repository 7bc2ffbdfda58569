#include "format_text.h"

#include <cstdio>

namespace local_platform {

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
