#include "files/key_file.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <array>
#include <cerrno>
#include <system_error>

#include "errors/input_error.h"
#include "files/file_descriptor.h"
#include "files/secret.h"
#include "text/hex.h"

using local_platform::CryptoKey;

namespace {

/// A key file is this word, a blank, the key in hexadecimal digits and a line end.
constexpr std::string_view kMark = "vrrp-valid-key ";
constexpr std::size_t kFileSize = kMark.size() + 2 * CryptoKey::kSize + 1;

}  // namespace

void make_key_file(const std::string& file) {
    const CryptoKey key;  // before the file: without random bytes none is left behind
    const FileDescriptor created(
        open(file.c_str(), O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC, S_IRUSR | S_IWUSR));
    if (!created.is_open()) {
        throw InputError(file + ": cannot make the key file: " + last_system_error());
    }
    Secret content;
    content.text.reserve(kFileSize);
    content.text += kMark;
    for (const unsigned char byte : key.bytes()) {
        content.text += kHexDigits[byte >> 4U];
        content.text += kHexDigits[byte & 0xfU];
    }
    content.text += '\n';
    try {
        write_all(created.number(), content.text);
        if (fsync(created.number()) != 0) {
            throw std::system_error(errno, std::generic_category());
        }
    } catch (const std::system_error& error) {
        unlink(file.c_str());
        throw InputError(file + ": cannot write the key file: " + error.code().message());
    }
}

CryptoKey read_key_file(const std::string& file) {
    const FileDescriptor opened(open(file.c_str(), O_RDONLY | O_CLOEXEC));
    struct stat status {};
    if (!opened.is_open() || fstat(opened.number(), &status) != 0) {
        throw InputError(file + ": the key file cannot be opened: " + last_system_error());
    }
    if ((status.st_mode & (S_IRWXG | S_IRWXO)) != 0) {
        throw InputError(file + ": readable by other users; run: chmod 600 " + file);
    }
    std::array<char, kFileSize + 1> content{};
    const ssize_t size = read(opened.number(), content.data(), content.size());
    const std::string_view text(content.data(), size < 0 ? 0 : static_cast<std::size_t>(size));
    std::array<unsigned char, CryptoKey::kSize> bytes{};
    bool is_key =
        text.size() == kFileSize && text.substr(0, kMark.size()) == kMark && text.back() == '\n';
    for (std::size_t i = 0; is_key && i < bytes.size(); ++i) {
        const std::size_t high = kHexDigits.find(text[kMark.size() + 2 * i]);
        const std::size_t low = kHexDigits.find(text[kMark.size() + 2 * i + 1]);
        is_key = high != std::string_view::npos && low != std::string_view::npos;
        bytes.at(i) = static_cast<unsigned char>(high << 4U | low);
    }
    const CryptoKey key(bytes);
    explicit_bzero(content.data(), content.size());
    explicit_bzero(bytes.data(), bytes.size());
    if (!is_key) {
        throw InputError(file + ": not a key file; make one with vrrp-valid keygen");
    }
    return key;
}
