#include "terminal/output.h"

#include <unistd.h>

#include <cstdlib>
#include <cstring>

#include "files/file_descriptor.h"
#include "text/printable.h"

namespace {

bool is_set(const char* variable) {
    const char* const value = std::getenv(variable);
    return value != nullptr && *value != '\0';
}

}  // namespace

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
    if (when != "auto") {
        return when == "always";
    }
    return is_set("CLICOLOR_FORCE") || (is_terminal(STDOUT_FILENO) && !is_set("NO_COLOR"));
}

std::string complaint(std::string_view reason) {
    return "vrrp-valid: " + printable(reason) + "\n";
}
