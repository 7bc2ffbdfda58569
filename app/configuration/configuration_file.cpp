#include "configuration/configuration_file.h"

#include <fcntl.h>
#include <unistd.h>

#include <cctype>

#include "configuration/netconf_envelope.h"
#include "errors/cannot_check.h"
#include "files/file_descriptor.h"

namespace {

constexpr std::string_view kByteOrderMark = "\xef\xbb\xbf";

ConfigurationFormat format_of(const std::string& name, std::string_view data) {
    const std::size_t first = data.find_first_not_of(" \t\r\n");
    if (first == std::string_view::npos) {
        throw CannotCheck(name + ": the file is empty; an empty configuration is written {}");
    }
    if (data[first] == '<') {
        return ConfigurationFormat::xml;
    }
    if (data[first] == '{') {
        return ConfigurationFormat::json;
    }
    throw CannotCheck(name +
                      ":1: neither JSON nor XML; give a configuration that begins with { or <");
}

ConfigurationFile read_open_file(const std::string& name, int fd, std::size_t max_size) {
    std::string bytes;
    try {
        bytes = read_all(fd, max_size);
    } catch (const std::runtime_error& error) {
        throw CannotCheck(name + ": cannot be read: " + error.what());
    }
    return configuration_from_bytes(name, std::move(bytes));
}

}  // namespace

ConfigurationFile read_configuration_file(const std::string& name, std::size_t max_size) {
    if (name == "-") {
        return read_open_file("standard input", STDIN_FILENO, max_size);
    }
    const FileDescriptor file(open(name.c_str(), O_RDONLY | O_CLOEXEC));
    if (!file.is_open()) {
        throw CannotCheck(name + ": cannot be opened: " + last_system_error());
    }
    return read_open_file(name, file.number(), max_size);
}

ConfigurationFile configuration_from_bytes(const std::string& name, std::string bytes) {
    std::string data = bytes;
    if (data.compare(0, kByteOrderMark.size(), kByteOrderMark) == 0) {
        data.erase(0, kByteOrderMark.size());
    }
    // The parsers end at a NUL, so what follows one would go unchecked.
    if (data.find('\0') != std::string::npos) {
        throw CannotCheck(name + ": holds a NUL byte; give a text file");
    }
    const ConfigurationFormat format = format_of(name, data);
    if (format == ConfigurationFormat::xml) {
        data = without_netconf_envelope(name, std::move(data));
    }
    return {name, std::move(bytes), format, std::move(data)};
}
