/// A file descriptor that closes itself, and reads and writes of the whole.
#pragma once

#include <string>
#include <string_view>

class FileDescriptor {
  public:
    /// Takes `number`; a negative one stands for none.
    explicit FileDescriptor(int number) : number_(number) {}
    FileDescriptor(FileDescriptor&& other) noexcept;
    FileDescriptor& operator=(FileDescriptor&&) = delete;
    ~FileDescriptor();

    int number() const { return number_; }
    bool is_open() const { return number_ >= 0; }

  private:
    int number_;
};

/// All that can be read from `fd`. Throws std::system_error.
std::string read_all(int fd);

/// Writes all of `bytes`. Throws std::system_error.
void write_all(int fd, std::string_view bytes);

/// What the last failed system call says, as text.
std::string last_system_error();
