#include "reports/source_lines.h"

#include <algorithm>

#include "terminal/output.h"

namespace {

constexpr std::size_t kShownBefore = 48;  ///< bytes of a long line
constexpr std::size_t kShownAfter = 48;

bool continues_character(char byte) {
    return (static_cast<unsigned char>(byte) & 0xc0U) == 0x80U;
}

/// Where the character number `count` of `line` begins.
std::size_t offset_of(std::string_view line, std::size_t count) {
    std::size_t offset = 0;
    for (; count > 0 && offset < line.size(); --count) {
        for (++offset; offset < line.size() && continues_character(line[offset]); ++offset) {
        }
    }
    return offset;
}

/// The size of the name at the front of `text`: a JSON string, an XML element's name with its "<",
/// or one character.
std::size_t name_size(std::string_view text) {
    if (text.empty()) {
        return 0;
    }
    if (text[0] == '<') {
        return std::min(text.find_first_of(" \t/>", 1), text.size());
    }
    std::size_t end = 1;
    if (text[0] == '"') {
        for (; end < text.size() && text[end] != '"'; ++end) {
            end += text[end] == '\\' ? 1 : 0;
        }
        return std::min(end + 1, text.size());
    }
    while (end < text.size() && continues_character(text[end])) {
        ++end;
    }
    return end;
}

std::string shown(std::string_view text) {
    std::string plain;
    for (std::size_t i = 0; i < text.size(); ++i) {
        if (text[i] == kMask) {
            plain += kSecretValue;
            i = std::min(text.find_first_not_of(kMask, i), text.size()) - 1;
        } else {
            plain += text[i] == '\t' ? ' ' : text[i];
        }
    }
    return printable(plain);
}

/// The last part of `text`, whole characters, when it is too long.
std::string end_of(std::string_view text) {
    if (text.size() <= kShownBefore) {
        return shown(text);
    }
    text.remove_prefix(text.size() - kShownBefore);
    while (!text.empty() && continues_character(text[0])) {
        text.remove_prefix(1);
    }
    return "…" + shown(text);
}

std::string start_of(std::string_view text, std::size_t size) {
    if (text.size() <= size) {
        return shown(text);
    }
    while (size > 0 && continues_character(text[size])) {
        --size;
    }
    return shown(text.substr(0, size)) + "…";
}

}  // namespace

SourceLines::SourceLines(const std::vector<std::shared_ptr<const SourceText>>& sources)
    : sources_(sources) {}

const SourceText* SourceLines::find(const Location& location) const {
    const auto found = std::find_if(sources_.begin(), sources_.end(), [&](const auto& source) {
        return source->name() == location.file;
    });
    return found == sources_.end() ? nullptr : found->get();
}

std::optional<Excerpt> SourceLines::excerpt(const Location& location) const {
    const SourceText* const source = find(location);
    if (source == nullptr || location.line == 0 || location.line > source->line_count()) {
        return std::nullopt;
    }
    const std::string text = source->line(location.line);
    const std::string_view line = text;
    if (location.column == 0) {
        return Excerpt{start_of(line, kShownBefore + kShownAfter), {}, {}};
    }
    const std::size_t begin = offset_of(line, location.column - 1);
    const std::size_t size = name_size(line.substr(begin));
    return Excerpt{end_of(line.substr(0, begin)), start_of(line.substr(begin, size), kShownAfter),
                   start_of(line.substr(begin + size), kShownAfter)};
}

std::size_t SourceLines::count(const Location& location) const {
    const SourceText* const source = find(location);
    return source == nullptr ? 0 : source->line_count();
}

std::size_t count_characters(std::string_view text) {
    return text.size() -
           static_cast<std::size_t>(std::count_if(text.begin(), text.end(), continues_character));
}
