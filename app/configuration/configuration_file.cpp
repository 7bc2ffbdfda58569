#include "configuration/configuration_file.h"

#include "errors/input_error.h"
#include "files/named_file.h"

namespace {

constexpr std::size_t kMostBytes = (std::size_t{1} << 31U) - 2;  // places are counted in 31 bits

/// What `text`, neither JSON nor XML, looks like.
std::string kind_of(std::string_view text) {
    const std::string_view line = text.substr(0, text.find_first_of("\r\n"));
    if (text.front() == '[') {
        return "a JSON array; give a configuration that begins with { or <";
    }
    const bool is_yaml = line == "---" || (!line.empty() && line.back() == ':');
    return std::string(is_yaml ? "YAML" : "no configuration file") + "; export it as JSON or XML";
}

}  // namespace

ConfigurationFormat format_of(const SourceText& source) {
    const std::string_view text = source.bytes();
    if (text.size() > kMostBytes) {
        throw InputError(source.name() + ": is 2 GiB or larger; check it in parts");
    }
    const std::string_view mark = text.substr(0, 2);
    if (mark == "\x1f\x8b") {
        throw InputError(source.name() + ": is packed with gzip; unpack it");
    }
    if (mark == "\xff\xfe" || mark == "\xfe\xff") {
        throw InputError(source.name() + ": is UTF-16; save it as UTF-8");
    }
    // No configuration has one, and texts end at it.
    const std::size_t nul = text.find('\0');
    if (nul != std::string_view::npos) {
        throw InputError(source.location(nul), "a NUL byte; give a text file");
    }
    const std::size_t first = text.find_first_not_of(" \t\r\n", byte_order_mark_size(text));
    if (first == std::string_view::npos) {
        throw InputError(source.name() +
                         ": the file is empty; an empty configuration is written {}");
    }
    if (text[first] == '<') {
        return ConfigurationFormat::xml;
    }
    if (text[first] == '{') {
        return ConfigurationFormat::json;
    }
    throw InputError(source.location(first), kind_of(text.substr(first)));
}

std::shared_ptr<SourceText> read_configuration_file(const std::string& name, std::size_t max_size,
                                                    const std::string& shown) {
    if (name.empty()) {
        throw InputError("a file name is empty; name the file, or - for standard input");
    }
    return std::make_shared<SourceText>(shown.empty() ? shown_name(name) : shown,
                                        read_named_file(name, max_size));
}
