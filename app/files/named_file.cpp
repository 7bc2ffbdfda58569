#include "files/named_file.h"

#include <fcntl.h>
#include <poll.h>
#include <unistd.h>

#include <cctype>
#include <cstring>
#include <filesystem>

#include "errors/input_error.h"
#include "files/interrupt.h"

namespace {

constexpr int kLook = 100;  // for how many milliseconds a thread waits before it looks around

/// Waits for the first byte in `file`, or its end. Throws InputError when the wait is over first.
void wait_for(const FileDescriptor& file, const std::string& name) {
    pollfd readable{file.number(), POLLIN, 0};
    while (poll(&readable, 1, kLook) <= 0) {
        if (is_interrupted()) {
            throw InputError(shown_name(name) + ": cannot be read: the wait for it was ended");
        }
    }
}

}  // namespace

std::string plain_name(const std::string& name) {
    const auto first = static_cast<unsigned char>(name.empty() ? '.' : name.front());
    const bool is_plain = std::isalnum(first) != 0 || std::strchr("./_", first) != nullptr;
    return is_plain || name == "-" ? name : "./" + name;
}

bool is_folder(const std::string& name) {
    std::error_code error;
    return std::filesystem::is_directory(name, error);
}

std::string shown_name(const std::string& name) {
    return name == "-" ? "standard input" : name;
}

std::string read_named_file(const std::string& name, std::size_t max_size) {
    // Without O_NONBLOCK a pipe is not even opened before somebody writes to it.
    const FileDescriptor file(name == "-" ? dup(STDIN_FILENO)
                                          : open(name.c_str(), O_RDONLY | O_CLOEXEC | O_NONBLOCK));
    if (!file.is_open()) {
        throw InputError(shown_name(name) + ": cannot be opened: " + last_system_error());
    }
    wait_for(file, name);
    if (name != "-") {
        fcntl(file.number(), F_SETFL, O_RDONLY);
    }
    try {
        return read_all(file.number(), max_size);
    } catch (const std::runtime_error& error) {
        throw InputError(shown_name(name) + ": cannot be read: " + error.what());
    }
}
