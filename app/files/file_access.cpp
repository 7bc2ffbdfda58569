#include "files/file_access.h"

#include <sys/stat.h>
#include <sys/xattr.h>
#include <unistd.h>

#include <cerrno>
#include <map>
#include <optional>
#include <string>

namespace {

using Attributes = std::map<std::string, std::string>;

/// What `get(nullptr, 0)` gives the size of and `get(buffer, size)` gives; nothing when it fails.
template <typename Get>
std::optional<std::string> sized(Get get) {
    const ssize_t size = get(nullptr, 0);
    if (size < 0) {
        return std::nullopt;
    }
    std::string bytes(static_cast<std::size_t>(size), '\0');
    const ssize_t filled = size == 0 ? 0 : get(bytes.data(), bytes.size());
    if (filled < 0) {
        return std::nullopt;
    }
    bytes.resize(static_cast<std::size_t>(filled));
    return bytes;
}

/// The extended attributes of `fd`; nothing when they cannot be read.
std::optional<Attributes> attributes_of(int fd) {
    const std::optional<std::string> names =
        sized([&](char* list, std::size_t size) { return flistxattr(fd, list, size); });
    if (!names) {
        return errno == ENOTSUP ? std::optional(Attributes()) : std::nullopt;
    }
    Attributes attributes;
    for (std::size_t at = 0; at < names->size(); at = names->find('\0', at) + 1) {
        const std::string name = names->c_str() + at;
        std::optional<std::string> value = sized([&](char* bytes, std::size_t size) {
            return fgetxattr(fd, name.c_str(), bytes, size);
        });
        if (!value) {
            return std::nullopt;
        }
        attributes[name] = std::move(*value);
    }
    return attributes;
}

bool carry_attributes(int from, int to) {
    const std::optional<Attributes> wanted = attributes_of(from);
    const std::optional<Attributes> present = attributes_of(to);
    if (!wanted || !present) {
        return false;
    }
    for (const auto& [name, value] : *present) {
        if (wanted->count(name) == 0 && fremovexattr(to, name.c_str()) != 0) {
            return false;
        }
    }
    for (const auto& [name, value] : *wanted) {
        const auto found = present->find(name);
        const bool is_there = found != present->end() && found->second == value;
        if (!is_there && fsetxattr(to, name.c_str(), value.data(), value.size(), 0) != 0) {
            return false;
        }
    }
    return true;
}

}  // namespace

bool carry_access(int from, int to) {
    struct stat status {};
    // The mode comes last: a change of the owner takes bits from it, and one of the list of the
    // named users moves those of the group.
    return fstat(from, &status) == 0 && fchown(to, status.st_uid, status.st_gid) == 0 &&
           carry_attributes(from, to) && fchmod(to, status.st_mode & 07777U) == 0;
}
