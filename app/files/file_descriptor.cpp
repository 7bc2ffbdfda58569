#include "files/file_descriptor.h"

#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <system_error>
#include <utility>

namespace {

constexpr std::size_t kReadSize = 65536;

/// What a call counted, `result`; throws when it failed.
std::size_t counted(ssize_t result) {
    if (result < 0) {
        throw std::system_error(errno, std::generic_category());
    }
    return static_cast<std::size_t>(result);
}

/// How many bytes a regular file has; 0 for anything else.
std::size_t known_size(int fd) {
    struct stat status {};
    counted(fstat(fd, &status));
    return S_ISREG(status.st_mode) ? static_cast<std::size_t>(status.st_size) : 0;
}

void require_at_most(std::size_t max_size, std::size_t size) {
    if (size > max_size) {
        throw std::runtime_error("it has more than " + std::to_string(max_size) +
                                 " bytes; raise --max-size");
    }
}

}  // namespace

FileDescriptor::FileDescriptor(FileDescriptor&& other) noexcept
    : number_(std::exchange(other.number_, -1)) {}

FileDescriptor& FileDescriptor::operator=(FileDescriptor&& other) noexcept {
    std::swap(number_, other.number_);
    return *this;
}

FileDescriptor::~FileDescriptor() {
    if (is_open()) {
        close(number_);
    }
}

std::string read_all(int fd, std::size_t max_size) {
    const std::size_t expected = known_size(fd);
    require_at_most(max_size, expected);
    std::string bytes;
    for (;;) {
        const std::size_t filled = bytes.size();
        // One byte more than a file has tells that it ends there.
        const std::size_t wanted =
            expected > 0 && expected >= filled ? expected - filled + 1 : kReadSize;
        bytes.resize(filled + wanted);
        const std::size_t count =
            counted(uninterrupted([&] { return read(fd, bytes.data() + filled, wanted); }));
        bytes.resize(filled + count);
        require_at_most(max_size, bytes.size());
        if (count == 0) {
            return bytes;
        }
    }
}

void write_all(int fd, std::string_view bytes) {
    while (!bytes.empty()) {
        bytes.remove_prefix(
            counted(uninterrupted([&] { return write(fd, bytes.data(), bytes.size()); })));
    }
}

std::string last_system_error() {
    return std::generic_category().message(errno);
}
