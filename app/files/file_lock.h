/// A lock for those who replace one file.
#pragma once

#include <functional>
#include <optional>
#include <string>

#include "files/file_descriptor.h"

/// How to wait for others.
struct Patience {
    std::optional<unsigned> seconds;  ///< how long at most; for ever without
    /// Told once, after a second, what is waited for: "waiting for process 4711, ...".
    std::function<void(const std::string& message)> on_wait;
};

/// Held while it lives, by one process at a time, on a file of its own that is removed at the end.
/// The system frees the lock when the process ends in any way; a file that is left then is in
/// nobody's way.
class FileLock {
  public:
    /// Waits for the lock file `name` in `folder`, which outlives the lock. `shown_name` is what
    /// messages call the file that the lock is for. Throws InputError.
    FileLock(int folder, std::string name, const std::string& shown_name, const Patience& patience);
    FileLock(const FileLock&) = delete;
    FileLock& operator=(const FileLock&) = delete;
    ~FileLock();

  private:
    int folder_;
    std::string name_;
    FileDescriptor file_;
};
