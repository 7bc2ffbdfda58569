#include "reports/source_lines.h"

#include <algorithm>

#include "text/printable.h"
#include "text/utf8.h"

namespace {

constexpr std::size_t kShownBefore = 48;  ///< bytes of a long line
constexpr std::size_t kShownAfter = 48;

/// Where the character number `count` of `line` begins.
std::size_t offset_of(std::string_view line, std::size_t count) {
    std::size_t offset = 0;
    for (; count > 0 && offset < line.size(); --count) {
        offset = end_of_character(line, offset);
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
    if (text[0] == '"') {
        std::size_t end = 1;
        for (; end < text.size() && text[end] != '"'; ++end) {
            end += text[end] == '\\' ? 1 : 0;
        }
        return std::min(end + 1, text.size());
    }
    return end_of_character(text, 0);
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
    while (!text.empty() && !begins_character(text[0])) {
        text.remove_prefix(1);
    }
    return "…" + shown(text);
}

std::string start_of(std::string_view text, std::size_t size) {
    if (text.size() <= size) {
        return shown(text);
    }
    while (size > 0 && !begins_character(text[size])) {
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
