#include "files/file_descriptor.h"

#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <system_error>

namespace {

constexpr std::size_t kReadSize = 65536;

/// What a call counted, `result`; throws when it failed.
std::size_t counted(ssize_t result) {
    if (result < 0) {
        throw std::system_error(errno, std::generic_category());
    }
    return static_cast<std::size_t>(result);
}

}  // namespace

FileDescriptor::~FileDescriptor() {
    if (is_open()) {
        close(number_);
    }
}

std::string read_all(int fd, std::size_t max_size) {
    struct stat status {};
    counted(fstat(fd, &status));
    // One byte more than a file has tells that it ends there; a pipe's size is not known.
    auto wanted = std::min(max_size, static_cast<std::size_t>(status.st_size)) + 1;
    std::string bytes;
    for (;;) {
        const std::size_t filled = bytes.size();
        bytes.resize(filled + wanted);
        const std::size_t count = counted(read(fd, bytes.data() + filled, wanted));
        bytes.resize(filled + count);
        if (count == 0) {
            return bytes;
        }
        if (bytes.size() > max_size) {
            throw std::runtime_error("it has more than " + std::to_string(max_size) +
                                     " bytes; raise --max-size");
        }
        wanted = wanted > count ? wanted - count : kReadSize;
    }
}

void write_all(int fd, std::string_view bytes) {
    while (!bytes.empty()) {
        bytes.remove_prefix(counted(write(fd, bytes.data(), bytes.size())));
    }
}

std::string last_system_error() {
    return std::generic_category().message(errno);
}
