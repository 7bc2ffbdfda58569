#include "files/file_lock.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <chrono>
#include <thread>

#include "errors/input_error.h"

namespace {

using Clock = std::chrono::steady_clock;

constexpr std::chrono::milliseconds kPause(20);
constexpr std::chrono::seconds kSilence(1);

[[noreturn]] void fail(const std::string& shown_name) {
    throw InputError(shown_name +
                     ": cannot be locked; nothing was changed: " + last_system_error());
}

/// The whole file, for writing.
struct flock whole_file() {
    struct flock range {};
    range.l_type = F_WRLCK;
    range.l_whence = SEEK_SET;
    return range;
}

/// False when another process holds the lock.
bool try_lock(int file, const std::string& shown_name) {
    struct flock range = whole_file();
    if (fcntl(file, F_SETLK, &range) == 0) {
        return true;
    }
    if (errno != EAGAIN && errno != EINTR) {
        fail(shown_name);
    }
    return false;
}

/// "process 4711": who holds the lock.
std::string holder_of(int file) {
    struct flock range = whole_file();
    const bool is_known =
        fcntl(file, F_GETLK, &range) == 0 && range.l_type != F_UNLCK && range.l_pid > 0;
    return is_known ? "process " + std::to_string(range.l_pid) : "another process";
}

/// Waits for others who hold the lock, for all files that come to be locked in its place.
class Wait {
  public:
    Wait(const std::string& shown_name, const Patience& patience)
        : shown_name_(shown_name), patience_(patience) {}

    /// A while, for the holder of `file`. Throws InputError when that was too long.
    void go_on(int file) {
        const Clock::duration waited = Clock::now() - start_;
        if (patience_.seconds && waited >= std::chrono::seconds(*patience_.seconds)) {
            throw InputError(shown_name_ + ": " + holder_of(file) +
                             " is committing to it; nothing was changed: run the command again, or "
                             "give a longer --lock-timeout");
        }
        if (!was_said_ && waited >= kSilence) {
            was_said_ = true;
            patience_.on_wait(shown_name_ + ": waiting for " + holder_of(file) +
                              ", which is committing to it");
        }
        std::this_thread::sleep_for(kPause);
    }

  private:
    const std::string& shown_name_;
    const Patience& patience_;
    Clock::time_point start_ = Clock::now();
    bool was_said_ = false;
};

/// Whether `file` still is what `name` names: who held the lock before has removed it at the end.
bool is_still_there(int folder, const std::string& name, int file, const std::string& shown_name) {
    struct stat opened {};
    struct stat named {};
    if (fstat(file, &opened) != 0) {
        fail(shown_name);
    }
    if (fstatat(folder, name.c_str(), &named, AT_SYMLINK_NOFOLLOW) != 0) {
        if (errno != ENOENT) {
            fail(shown_name);
        }
        return false;
    }
    return opened.st_dev == named.st_dev && opened.st_ino == named.st_ino;
}

/// The lock file, locked.
FileDescriptor lock(int folder, const std::string& name, const std::string& shown_name,
                    const Patience& patience) {
    Wait wait(shown_name, patience);
    for (;;) {
        FileDescriptor file(uninterrupted([&] {
            return openat(folder, name.c_str(),
                          O_RDWR | O_CREAT | O_NOFOLLOW | O_NONBLOCK | O_CLOEXEC,
                          S_IRUSR | S_IWUSR | S_IRGRP | S_IWGRP);
        }));
        if (!file.is_open()) {
            fail(shown_name);
        }
        while (!try_lock(file.number(), shown_name)) {
            wait.go_on(file.number());
        }
        if (is_still_there(folder, name, file.number(), shown_name)) {
            return file;
        }
    }
}

}  // namespace

FileLock::FileLock(int folder, std::string name, const std::string& shown_name,
                   const Patience& patience)
    : folder_(folder), name_(std::move(name)), file_(lock(folder, name_, shown_name, patience)) {}

FileLock::~FileLock() {
    unlinkat(folder_, name_.c_str(), 0);  // while it is locked: the next one makes its own
}
