#include "checking/masked_text.h"

#include <algorithm>
#include <cctype>
#include <set>

using local_platform::SchemaNode;

namespace {

constexpr const char* kBlanks = " \t\r\n";

void collect_names(const SchemaNode& node, std::set<std::string>& names) {
    if (node.is_encrypted) {
        names.insert(node.name);
    }
    for (const SchemaNode& child : node.children) {
        collect_names(child, names);
    }
}

bool is_name_character(char c) {
    return std::isalnum(static_cast<unsigned char>(c)) != 0 || c == '-' || c == '_' || c == '.';
}

/// The end of the JSON string whose opening quote is at `at`.
std::size_t end_of_string(const std::string& text, std::size_t at) {
    for (++at; at < text.size() && text[at] != '"'; ++at) {
        at += text[at] == '\\' ? 1 : 0;
    }
    return at;
}

struct Range {
    std::size_t begin;
    std::size_t end;
};

/// What begins the word of which the text up to `at` is the front, a prefix and its colon
/// included: a quote for a JSON name, "<" for the name of an XML element that is opened.
char start_of_word(const std::string& text, std::size_t at) {
    if (at > 0 && text[at - 1] == ':') {
        for (--at; at > 0 && is_name_character(text[at - 1]); --at) {
        }
    }
    return at == 0 ? '\0' : text[at - 1];
}

/// Of the JSON name whose closing quote is at `at`: its value, between the quotes of a string.
Range member_value(const std::string& text, std::size_t at) {
    for (const char expected : {'"', ':'}) {
        if (at == std::string::npos || text[at] != expected) {
            return {at, at};
        }
        at = text.find_first_not_of(kBlanks, at + 1);
    }
    if (at == std::string::npos) {
        return {at, at};
    }
    return text[at] == '"' ? Range{at + 1, end_of_string(text, at)}
                           : Range{at, text.find_first_of(",}]\n", at)};
}

/// Of the XML element `name` in whose opening tag `at` is: what is between its tags.
Range element_value(const std::string& text, std::size_t at, const std::string& name) {
    at = text.find('>', at);
    if (at == std::string::npos || text[at - 1] == '/') {
        return {at, at};
    }
    std::size_t end = at + 1;
    for (; (end = text.find("</", end)) != std::string::npos; ++end) {
        std::size_t word = end + 2;
        const std::size_t colon = text.find_first_of(":>", word);
        word = colon != std::string::npos && text[colon] == ':' ? colon + 1 : word;
        if (text.compare(word, name.size(), name) == 0) {
            break;
        }
    }
    return {at + 1, end};
}

void mask(std::string& text, Range range) {
    range.end = std::min(range.end, text.size());
    if (range.begin >= range.end) {
        return;
    }
    std::string masked;
    for (std::size_t i = range.begin; i < range.end; ++i) {
        const bool goes_on = (static_cast<unsigned char>(text[i]) & 0xc0U) == 0x80U;
        if (!goes_on) {
            masked += text[i] == '\n' || text[i] == '\r' ? text[i] : kMask;
        }
    }
    text.replace(range.begin, range.end - range.begin, masked);
}

}  // namespace

std::string masked_text(std::string text, const SchemaNode& schema) {
    std::set<std::string> names;
    collect_names(schema, names);
    for (const std::string& name : names) {
        for (std::size_t at = 0; (at = text.find(name, at)) != std::string::npos;) {
            const std::size_t end = at + name.size();
            const char start = start_of_word(text, at);
            if (start == '"') {
                mask(text, member_value(text, std::min(end, text.size() - 1)));
            } else if (start == '<' && end < text.size() && !is_name_character(text[end])) {
                mask(text, element_value(text, end, name));
            }
            at = end;
        }
    }
    return text;
}
