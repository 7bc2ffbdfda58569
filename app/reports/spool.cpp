#include "reports/spool.h"

#include "errors/cannot_check.h"
#include "files/file_descriptor.h"

namespace {

constexpr std::size_t kInMemory = std::size_t{64} << 10U;

void require(bool is_done) {
    if (!is_done) {
        throw CannotCheck("a temporary file for the report cannot be used: " + last_system_error() +
                          "; make room in " P_tmpdir ", or take --format text or json");
    }
}

}  // namespace

void Spool::write(const std::string& text) {
    text_ += text;
    if (text_.size() <= kInMemory) {
        return;
    }
    if (file_ == nullptr) {
        file_.reset(std::tmpfile());
        require(file_ != nullptr);
    }
    require(std::fwrite(text_.data(), 1, text_.size(), file_.get()) == text_.size());
    text_.clear();
}

void Spool::copy_to(const Write& write) const {
    if (file_ != nullptr) {
        require(std::fflush(file_.get()) == 0 && std::fseek(file_.get(), 0, SEEK_SET) == 0);
        std::string part(kInMemory, '\0');
        while (const std::size_t size = std::fread(part.data(), 1, part.size(), file_.get())) {
            write(part.substr(0, size));
        }
        require(std::ferror(file_.get()) == 0);
    }
    write(text_);
}
