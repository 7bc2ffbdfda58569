#include "files/replace_file.h"

#include <fcntl.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <filesystem>
#include <system_error>

#include "errors/cannot_check.h"

namespace {

constexpr int kMostLinks = 40;

[[noreturn]] void fail(const std::string& file, const char* what) {
    throw CannotCheck(file + ": " + what + ": " + last_system_error());
}

/// Where `file` really lies: the target of symbolic links, also of one that points at nothing yet.
std::filesystem::path resolve(const std::string& file) {
    std::filesystem::path path = file;
    for (int links = 0; links < kMostLinks; ++links) {
        std::error_code error;
        const std::filesystem::path target = std::filesystem::read_symlink(path, error);
        if (error == std::errc::invalid_argument || error == std::errc::no_such_file_or_directory) {
            return path;
        }
        if (error) {
            throw CannotCheck(file + ": cannot be looked at; it is as it was: " + error.message());
        }
        path = path.parent_path() / target;
    }
    throw CannotCheck(file + ": too many symbolic links; it is as it was");
}

/// Removes a temporary file unless it was renamed.
class TemporaryFile {
  public:
    TemporaryFile(int folder, const std::string& name) : folder_(folder), name_(name) {}
    TemporaryFile(const TemporaryFile&) = delete;
    TemporaryFile& operator=(const TemporaryFile&) = delete;
    ~TemporaryFile() {
        if (!renamed_) {
            unlinkat(folder_, name_.c_str(), 0);
        }
    }

    bool rename_to(const std::string& name) {
        renamed_ = renameat(folder_, name_.c_str(), folder_, name.c_str()) == 0;
        return renamed_;
    }

  private:
    int folder_;
    const std::string& name_;
    bool renamed_ = false;
};

}  // namespace

FolderLock::FolderLock(const std::string& file) : FolderLock(file, resolve(file)) {}

FolderLock::FolderLock(const std::string& file, const std::filesystem::path& target)
    : shown_name_(file),
      name_(target.filename()),
      temporary_name_("." + name_ + ".vrrp-valid-new"),
      folder_(open((target.parent_path() / ".").c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC)) {
    if (name_.empty()) {
        throw CannotCheck(file + ": names a folder; name the file to replace");
    }
    if (!folder_.is_open()) {
        fail(file, "its folder cannot be opened; it is as it was");
    }
    while (flock(folder_.number(), LOCK_EX) != 0) {
        if (errno != EINTR) {
            fail(file, "its folder cannot be locked; it is as it was");
        }
    }
}

std::optional<std::string> FolderLock::read_file() const {
    const FileDescriptor file(openat(folder_.number(), name_.c_str(), O_RDONLY | O_CLOEXEC));
    if (!file.is_open()) {
        if (errno == ENOENT) {
            return std::nullopt;
        }
        fail(shown_name_, "cannot be opened; it is as it was");
    }
    try {
        return read_all(file.number());
    } catch (const std::system_error& error) {
        throw CannotCheck(shown_name_ +
                          ": cannot be read; it is as it was: " + error.code().message());
    }
}

void FolderLock::replace_file(const std::string& bytes) const {
    struct stat before {};
    const bool existed =
        fstatat(folder_.number(), name_.c_str(), &before, AT_SYMLINK_NOFOLLOW) == 0;
    if (!existed && errno != ENOENT) {
        fail(shown_name_, "cannot be looked at; it is as it was");
    }
    // One may be left of a commit that was killed; the lock says that nobody is at it.
    unlinkat(folder_.number(), temporary_name_.c_str(), 0);
    const FileDescriptor file(openat(folder_.number(), temporary_name_.c_str(),
                                     O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC | O_NOFOLLOW,
                                     existed ? S_IRUSR | S_IWUSR : 0666));
    if (!file.is_open()) {
        fail(shown_name_, "no new file can be made beside it; it is as it was");
    }
    TemporaryFile temporary(folder_.number(), temporary_name_);
    if (existed && (fchown(file.number(), before.st_uid, before.st_gid) != 0 ||
                    fchmod(file.number(), before.st_mode & 07777U) != 0)) {
        fail(shown_name_, "the new file cannot have its permissions; it is as it was");
    }
    try {
        write_all(file.number(), bytes);
    } catch (const std::system_error& error) {
        throw CannotCheck(shown_name_ + ": the new file cannot be written; it is as it was: " +
                          error.code().message());
    }
    if (fsync(file.number()) != 0) {
        fail(shown_name_, "the new file cannot be written to disk; it is as it was");
    }
    if (!temporary.rename_to(name_)) {
        fail(shown_name_, "cannot be replaced; it is as it was");
    }
    if (fsync(folder_.number()) != 0) {
        fail(shown_name_,
             "the new configuration is in its place, but a power failure may undo that");
    }
}
