#include "terminal/output_file.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cstdlib>
#include <filesystem>

#include "errors/input_error.h"
#include "files/file_descriptor.h"

namespace fs = std::filesystem;

namespace {

/// What a new file may be used for by whom, as the process was told.
mode_t usual_mode() {
    const mode_t mask = umask(0);
    umask(mask);
    return 0666U & ~mask;
}

}  // namespace

OutputFile::OutputFile(const std::string& name) {
    std::error_code error;
    name_ = fs::weakly_canonical(name, error);
    struct stat before {};
    const bool existed = stat(name.c_str(), &before) == 0;
    const bool is_replaced = !existed || S_ISREG(before.st_mode);
    if (is_replaced) {
        temporary_name_ = (fs::path(name_).parent_path() / ".vrrp-valid-XXXXXX").string();
    }
    const FileDescriptor file(is_replaced ? mkostemp(temporary_name_.data(), O_CLOEXEC)
                                          : open(name.c_str(), O_WRONLY | O_CLOEXEC));
    const mode_t mode = existed ? before.st_mode & 0777U : usual_mode();
    if (!file.is_open() || (is_replaced && fchmod(file.number(), mode) != 0) ||
        dup2(file.number(), STDOUT_FILENO) < 0) {
        throw InputError(name + ": the output cannot be written: " + last_system_error());
    }
}

OutputFile::~OutputFile() {
    unlink(temporary_name_.c_str());  // which may have no name
}

void OutputFile::put_in_place() {
    if (temporary_name_.empty()) {
        return;
    }
    if (fsync(STDOUT_FILENO) != 0 || rename(temporary_name_.c_str(), name_.c_str()) != 0) {
        throw InputError(name_ + ": the output cannot be written: " + last_system_error());
    }
    temporary_name_.clear();
}
