#include "files/locked_file.h"

#include <fcntl.h>
#include <unistd.h>

#include <cerrno>
#include <filesystem>
#include <system_error>

#include "errors/input_error.h"
#include "files/file_access.h"

namespace {

constexpr int kMostLinks = 40;
/// Of a file that was not there before. It may hold passwords.
constexpr mode_t kFirstMode = S_IRUSR | S_IWUSR | S_IRGRP;

[[noreturn]] void fail(const std::string& file, const char* what) {
    throw InputError(file + ": " + what + "; nothing was changed: " + last_system_error());
}

[[noreturn]] void refuse_irregular(const std::string& file) {
    throw InputError(file + ": not a regular file; name the file to replace");
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
            throw InputError(file +
                             ": cannot be examined; nothing was changed: " + error.message());
        }
        path = path.parent_path() / target;
    }
    throw InputError(file + ": too many symbolic links; nothing was changed");
}

std::string folder_of(const std::filesystem::path& target) {
    return (target.parent_path() / ".").string();
}

/// Opens the folder that `target` is to lie in, once it is clear that it is no device, folder or
/// the like: those are not even locked.
FileDescriptor open_folder(const std::string& shown_name, const std::filesystem::path& target) {
    struct stat status {};
    const bool exists = stat(target.c_str(), &status) == 0;
    if (!exists && errno != ENOENT) {
        fail(shown_name, "cannot be examined");
    }
    if (exists && !S_ISREG(status.st_mode)) {
        refuse_irregular(shown_name);
    }
    FileDescriptor folder(uninterrupted(
        [&] { return open(folder_of(target).c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC); }));
    if (!folder.is_open()) {
        fail(shown_name, "its folder cannot be opened");
    }
    if (!target.has_filename()) {
        refuse_irregular(shown_name);
    }
    return folder;
}

bool is_same(const timespec& one, const timespec& other) {
    return one.tv_sec == other.tv_sec && one.tv_nsec == other.tv_nsec;
}

/// Removes a temporary file unless it was renamed.
class TemporaryFile {
  public:
    TemporaryFile(int folder, std::string name) : folder_(folder), name_(std::move(name)) {}
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
    std::string name_;
    bool renamed_ = false;
};

}  // namespace

LockedFile::Place::Place(const std::string& shown_name, const std::filesystem::path& target,
                         const Patience& patience)
    : name(target.filename()),
      folder(open_folder(shown_name, target)),
      lock(folder.number(), "." + name + ".vrrp-valid-lock", shown_name, patience) {}

bool LockedFile::Place::is_place_of(const std::string& shown_name) const {
    const std::filesystem::path target = resolve(shown_name);
    struct stat named {};
    struct stat opened {};
    if (stat(folder_of(target).c_str(), &named) != 0 || fstat(folder.number(), &opened) != 0) {
        fail(shown_name, "its folder cannot be examined");
    }
    return target.filename() == name && named.st_dev == opened.st_dev &&
           named.st_ino == opened.st_ino;
}

LockedFile::LockedFile(const std::string& file, std::size_t max_size, Patience patience)
    : shown_name_(file), max_size_(max_size), patience_(std::move(patience)) {
    lock();
    read();
}

void LockedFile::lock() {
    do {
        place_.reset();
        place_.emplace(shown_name_, resolve(shown_name_), patience_);
    } while (!place_->is_place_of(shown_name_));  // a link may have changed during the wait
}

void LockedFile::read() {
    file_ = FileDescriptor(uninterrupted([&] {
        return openat(place_->folder.number(), place_->name.c_str(),
                      O_RDONLY | O_NONBLOCK | O_NOFOLLOW | O_CLOEXEC);
    }));
    if (!file_.is_open()) {
        if (errno == ENOENT) {
            return;
        }
        fail(shown_name_, "cannot be opened");
    }
    if (fstat(file_.number(), &seen_) != 0) {
        fail(shown_name_, "cannot be examined");
    }
    if (!S_ISREG(seen_.st_mode)) {
        refuse_irregular(shown_name_);
    }
    try {
        bytes_ = read_all(file_.number(), max_size_);
    } catch (const std::runtime_error& error) {
        throw InputError(shown_name_ + ": cannot be read; nothing was changed: " + error.what());
    }
}

bool LockedFile::is_as_it_was_read() const {
    if (!place_->is_place_of(shown_name_)) {
        return false;
    }
    struct stat now {};
    const bool exists =
        fstatat(place_->folder.number(), place_->name.c_str(), &now, AT_SYMLINK_NOFOLLOW) == 0;
    if (!exists && errno != ENOENT) {
        fail(shown_name_, "cannot be examined");
    }
    if (!exists || !file_.is_open()) {
        return exists == file_.is_open();
    }
    if (now.st_dev != seen_.st_dev || now.st_ino != seen_.st_ino || now.st_size != seen_.st_size ||
        !is_same(now.st_mtim, seen_.st_mtim) || !is_same(now.st_ctim, seen_.st_ctim)) {
        return false;
    }
    // Times tell a change only when they move on between two of them.
    if (lseek(file_.number(), 0, SEEK_SET) != 0) {
        fail(shown_name_, "cannot be read again");
    }
    try {
        return read_all(file_.number(), max_size_) == bytes_;
    } catch (const std::runtime_error& error) {
        throw InputError(shown_name_ +
                         ": cannot be read again; nothing was changed: " + error.what());
    }
}

std::string LockedFile::replace(const std::string& bytes) const {
    const int folder = place_->folder.number();
    const std::string temporary_name = "." + place_->name + ".vrrp-valid-new";
    // One may be left of a commit that was killed; the lock says that nobody is at it.
    unlinkat(folder, temporary_name.c_str(), 0);
    const bool is_first = !file_.is_open();
    const FileDescriptor file(uninterrupted([&] {
        return openat(folder, temporary_name.c_str(),
                      O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC | O_NOFOLLOW,
                      is_first ? kFirstMode : S_IRUSR | S_IWUSR);
    }));
    if (!file.is_open()) {
        fail(shown_name_, "cannot create a new file next to it");
    }
    TemporaryFile temporary(folder, temporary_name);
    try {
        write_all(file.number(), bytes);
    } catch (const std::system_error& error) {
        throw InputError(shown_name_ + ": the new file cannot be written; nothing was changed: " +
                         error.code().message());
    }
    if (!is_first && !carry_access(file_.number(), file.number())) {
        fail(shown_name_, "the new file cannot get its owner, permissions and attributes");
    }
    if (uninterrupted([&] { return fsync(file.number()); }) != 0) {
        fail(shown_name_, "the new file cannot be written to disk");
    }
    if (!is_as_it_was_read()) {
        throw InputError(shown_name_ +
                         ": someone changed it after it was read; nothing was written: run the "
                         "command again, to check against its new content");
    }
    if (!temporary.rename_to(place_->name)) {
        fail(shown_name_, "cannot be replaced");
    }
    return uninterrupted([&] { return fsync(folder); }) == 0 ? "" : last_system_error();
}
