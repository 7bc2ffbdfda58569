#include "reports/spool.h"

#include <fcntl.h>
#include <unistd.h>

#include <cstdlib>
#include <filesystem>
#include <system_error>

#include "errors/input_error.h"

namespace {

constexpr std::size_t kInMemory = std::size_t{64} << 10U;

/// The one that TMPDIR names, or /tmp; empty when that is no folder.
std::string folder() {
    std::error_code error;
    return std::filesystem::temp_directory_path(error).string();
}

/// Opens a file without a name; negative when there can be none.
int temporary_file() {
    std::string name = folder();
    const bool has_folder = !name.empty();
    name += "/vrrp-valid-XXXXXX";
    const int file = has_folder ? mkostemp(name.data(), O_CLOEXEC) : -1;
    if (file >= 0) {
        unlink(name.c_str());
    }
    return file;
}

[[noreturn]] void refuse(const std::string& what_failed) {
    throw InputError("a temporary file for the report in " + folder() + " cannot be " +
                     what_failed + "; make room there, or name another folder in TMPDIR");
}

}  // namespace

void Spool::write(const std::string& text) {
    text_ += text;
    if (text_.size() <= kInMemory) {
        return;
    }
    if (!file_) {
        file_.emplace(temporary_file());
    }
    if (!file_->is_open()) {
        return;
    }
    try {
        write_all(file_->number(), text_);
    } catch (const std::system_error& error) {
        refuse("written: " + error.code().message());
    }
    text_.clear();
}

void Spool::copy_to(const Write& write) const {
    std::string part(kInMemory, '\0');
    for (off_t at = 0; file_ && file_->is_open();) {
        const ssize_t size = pread(file_->number(), part.data(), part.size(), at);
        if (size < 0) {
            refuse("read: " + last_system_error());
        }
        if (size == 0) {
            break;
        }
        write(part.substr(0, static_cast<std::size_t>(size)));
        at += size;
    }
    if (!text_.empty()) {
        write(text_);
    }
}
