#include "checking/rule_message.h"

#include <string_view>

namespace {

/// Whether `text` is `pattern` with some text for each word in angle brackets. The texts between
/// those are looked for one after the other, each as early as it can be.
bool fits(std::string_view text, std::string_view pattern) {
    std::size_t open = pattern.find('<');
    if (text.substr(0, open) != pattern.substr(0, open)) {
        return false;
    }
    while (open != std::string_view::npos) {
        text.remove_prefix(open);
        pattern.remove_prefix(pattern.find('>', open) + 1);
        open = pattern.find('<');
        const std::string_view literal = pattern.substr(0, open);
        const bool is_last = open == std::string_view::npos;
        const std::size_t found = is_last ? text.rfind(literal) : text.find(literal);
        if (found == std::string_view::npos || (is_last && found + literal.size() != text.size())) {
            return false;
        }
        text.remove_prefix(found);
    }
    return true;
}

}  // namespace

std::string help_for(const Rule& use, std::string_view message) {
    for (const RuleMessage& known : use.messages) {
        if (fits(message, known.text)) {
            return known.help;
        }
    }
    return {};
}
