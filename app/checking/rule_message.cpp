#include "checking/rule_message.h"

#include <fnmatch.h>

#include <regex>

namespace {

/// Whether `text` is `pattern` with some text for each word in angle brackets.
bool fits(const std::string& text, const std::string& pattern) {
    static const std::regex special(R"([*?\\[])");
    static const std::regex word("<[^>]*>");
    const std::string literal = std::regex_replace(pattern, special, R"(\$&)");
    return fnmatch(std::regex_replace(literal, word, "*").c_str(), text.c_str(), 0) == 0;
}

}  // namespace

std::string help_for(const Rule& use, const std::string& message) {
    for (const RuleMessage& known : use.messages) {
        if (fits(message, known.text)) {
            return known.help;
        }
    }
    return {};
}
