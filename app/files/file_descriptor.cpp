#include "files/file_descriptor.h"

#include <unistd.h>

#include <cerrno>
#include <system_error>
#include <utility>

namespace {

constexpr std::size_t kReadSize = 65536;

/// `call()` again for as long as a signal interrupts it.
template <typename Call>
std::size_t retry(Call call) {
    for (;;) {
        const ssize_t result = call();
        if (result >= 0) {
            return static_cast<std::size_t>(result);
        }
        if (errno != EINTR) {
            throw std::system_error(errno, std::generic_category());
        }
    }
}

}  // namespace

FileDescriptor::FileDescriptor(FileDescriptor&& other) noexcept
    : number_(std::exchange(other.number_, -1)) {}

FileDescriptor::~FileDescriptor() {
    if (is_open()) {
        close(number_);
    }
}

std::string read_all(int fd) {
    std::string bytes;
    for (;;) {
        const std::size_t filled = bytes.size();
        bytes.resize(filled + kReadSize);
        const std::size_t count = retry([&] { return read(fd, bytes.data() + filled, kReadSize); });
        bytes.resize(filled + count);
        if (count == 0) {
            return bytes;
        }
    }
}

void write_all(int fd, std::string_view bytes) {
    while (!bytes.empty()) {
        bytes.remove_prefix(retry([&] { return write(fd, bytes.data(), bytes.size()); }));
    }
}

std::string last_system_error() {
    return std::generic_category().message(errno);
}
