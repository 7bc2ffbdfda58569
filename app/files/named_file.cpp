#include "files/named_file.h"

#include <fcntl.h>
#include <poll.h>
#include <unistd.h>

#include "errors/cannot_check.h"

std::string shown_name(const std::string& name) {
    return name == "-" ? "standard input" : name;
}

std::string read_named_file(const std::string& name, std::size_t max_size) {
    const FileDescriptor file(name == "-" ? dup(STDIN_FILENO)
                                          : open(name.c_str(), O_RDONLY | O_CLOEXEC));
    if (!file.is_open()) {
        throw CannotCheck(shown_name(name) + ": cannot be opened: " + last_system_error());
    }
    // Unlike a read, it does not go on when the operator ends the run.
    pollfd readable{file.number(), POLLIN, 0};
    if (poll(&readable, 1, -1) < 0) {
        throw CannotCheck(shown_name(name) + ": cannot be read: " + last_system_error());
    }
    try {
        return read_all(file.number(), max_size);
    } catch (const std::runtime_error& error) {
        throw CannotCheck(shown_name(name) + ": cannot be read: " + error.what());
    }
}
