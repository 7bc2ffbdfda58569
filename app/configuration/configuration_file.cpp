#include "configuration/configuration_file.h"

#include "configuration/source_text.h"
#include "errors/input_error.h"
#include "files/named_file.h"

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
        throw InputError(name + ": the file is empty; an empty configuration is written {}");
    }
    if (text[first] == '<') {
        return ConfigurationFormat::xml;
    }
    if (text[first] == '{') {
        return ConfigurationFormat::json;
    }
    throw InputError(
        SourceText(name, bytes).location(first),
        kind_of(text.substr(first)) + "; give a configuration that begins with { or <");
}

}  // namespace

ConfigurationFile read_configuration_file(const std::string& name, std::size_t max_size) {
    if (name.empty()) {
        throw InputError("a file name is empty; name the file, or - for standard input");
    }
    return configuration_from_bytes(shown_name(name), read_named_file(name, max_size));
}

ConfigurationFile configuration_from_bytes(const std::string& name, std::string bytes) {
    // No configuration has one, and texts end at it.
    const std::size_t nul = bytes.find('\0');
    if (nul != std::string::npos) {
        throw InputError(SourceText(name, bytes).location(nul), "a NUL byte; give a text file");
    }
    const ConfigurationFormat format = format_of(name, bytes);
    return {name, std::move(bytes), format};
}
