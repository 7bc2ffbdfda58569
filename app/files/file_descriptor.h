/// A file descriptor that closes itself, and reads and writes of the whole.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>

class FileDescriptor {
  public:
    /// Takes `number`; a negative one is none.
    explicit FileDescriptor(int number) : number_(number) {}
    FileDescriptor(const FileDescriptor&) = delete;
    FileDescriptor& operator=(const FileDescriptor&) = delete;
    ~FileDescriptor();

    int number() const { return number_; }
    bool is_open() const { return number_ >= 0; }

  private:
    int number_;
};

/// How many bytes a file may have, unless the operator says otherwise: 1 GiB.
constexpr std::size_t kLargestFile = std::size_t{1} << 30U;

/// All that can be read from `fd`, at most `max_size` bytes. Throws std::runtime_error with the
/// reason alone, without the file's name, when it cannot be read or has more.
std::string read_all(int fd, std::size_t max_size = kLargestFile);

/// Writes all of `bytes`. Throws std::system_error.
void write_all(int fd, std::string_view bytes);

/// What the last failed system call says, as text.
std::string last_system_error();
