#include "terminal/output.h"

#include <unistd.h>

#include <cstdlib>
#include <cstring>

#include "files/file_descriptor.h"
#include "text/printable.h"

void print(const std::string& text) {
    try {
        write_all(STDOUT_FILENO, text);
    } catch (const std::system_error& error) {
        throw OutputError(error.code());
    }
}

bool is_terminal(int fd) {
    const char* const kind = std::getenv("TERM");
    return isatty(fd) == 1 && (kind == nullptr || std::strcmp(kind, "dumb") != 0);
}

bool wants_colour(const std::string& when) {
    const char* const unwanted = std::getenv("NO_COLOR");
    const bool is_unwanted = unwanted != nullptr && *unwanted != '\0';
    return when == "always" || (when == "auto" && is_terminal(STDOUT_FILENO) && !is_unwanted);
}

std::string complaint(std::string_view reason) {
    return "vrrp-valid: " + printable(reason) + "\n";
}
