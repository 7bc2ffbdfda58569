#include "configuration/configuration_file.h"

#include <fcntl.h>
#include <unistd.h>

#include "configuration/text_position.h"
#include "errors/cannot_check.h"
#include "files/file_descriptor.h"

namespace {

/// What `text`, neither JSON nor XML, looks like.
std::string kind_of(std::string_view text) {
    const std::string_view line = text.substr(0, text.find_first_of("\r\n"));
    if (text.front() == '[') {
        return "a JSON array";
    }
    const bool is_yaml = line == "---" || (!line.empty() && line.back() == ':');
    return is_yaml ? "YAML" : "neither JSON nor XML";
}

ConfigurationFormat format_of(const std::string& name, const std::string& bytes) {
    const std::string_view text = bytes;
    const std::size_t first = text.find_first_not_of(" \t\r\n", byte_order_mark_size(text));
    if (first == std::string_view::npos) {
        throw CannotCheck(name + ": the file is empty; an empty configuration is written {}");
    }
    if (text[first] == '<') {
        return ConfigurationFormat::xml;
    }
    if (text[first] == '{') {
        return ConfigurationFormat::json;
    }
    throw CannotCheck(
        position_in(name, text, first),
        kind_of(text.substr(first)) + "; give a configuration that begins with { or <");
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
    if (name.empty()) {
        throw CannotCheck("a file name is empty; name the file, or - for standard input");
    }
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
    // No configuration has one, and texts end at it.
    const std::size_t nul = bytes.find('\0');
    if (nul != std::string::npos) {
        throw CannotCheck(position_in(name, bytes, nul), "a NUL byte; give a text file");
    }
    const ConfigurationFormat format = format_of(name, bytes);
    return {name, std::move(bytes), format};
}
