#include "output.h"

#include <unistd.h>

#include <cstdlib>
#include <system_error>

#include "cannot_judge.h"
#include "file_descriptor.h"

void print(const std::string& text) {
    try {
        write_all(STDOUT_FILENO, text);
    } catch (const std::system_error& error) {
        throw CannotJudge("standard output cannot be written: " + error.code().message());
    }
}

bool wants_colour() {
    const char* const no_colour = std::getenv("NO_COLOR");
    return isatty(STDOUT_FILENO) == 1 && (no_colour == nullptr || *no_colour == '\0');
}
