#include "reports/source_lines.h"

#include <algorithm>

#include "text/printable.h"
#include "text/utf8.h"
#include "trees/difference.h"

namespace {

constexpr std::size_t kShownAround = 48;         ///< bytes of a long line, on each side
constexpr std::size_t kNear = 8 * kShownAround;  ///< bytes that are looked at for that

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
    if (text.size() <= kShownAround) {
        return shown(text);
    }
    return "…" + shown(text.substr(end_of_character(text, text.size() - kShownAround - 1)));
}

std::string start_of(std::string_view text, std::size_t size = kShownAround) {
    if (text.size() <= size) {
        return shown(text);
    }
    while (size > 0 && !begins_character(text[size])) {
        --size;
    }
    return shown(text.substr(0, size)) + "…";
}

}  // namespace

const SourceText* source_of(const Report& report, const Location& location) {
    for (const auto& source : report.sources) {
        if (source->name() == location.file && location.is_known() &&
            location.line <= source->line_count()) {
            return source.get();
        }
    }
    return nullptr;
}

Excerpt excerpt(const SourceText& source, std::size_t line, std::size_t column) {
    const SourceText::LinePart part = source.part_of_line(line, column, kNear);
    if (column == 0) {
        return {start_of(part.after, 2 * kShownAround), {}, {}};
    }
    const std::string_view after = part.after;
    const std::size_t size = name_size(after);
    return {end_of(part.before), start_of(after.substr(0, size)), start_of(after.substr(size))};
}
