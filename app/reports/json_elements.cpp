#include "reports/json_elements.h"

std::string indented(const Json& json, const std::string& indent) {
    std::string text;
    for (const char c : json.dump(2)) {
        text += c;
        text += c == '\n' ? indent : "";
    }
    return text;
}

JsonElements::JsonElements(Write write, const std::string& head, std::size_t depth)
    : write_(std::move(write)), indent_(2 * depth, ' ') {
    write_(head + "[");
}

void JsonElements::add(const Json& element) {
    const std::string inner = indent_ + "  ";
    write_((is_empty_ ? "\n" : ",\n") + inner + indented(element, inner));
    is_empty_ = false;
}

void JsonElements::finish(const std::string& tail) {
    write_((is_empty_ ? "]" : "\n" + indent_ + "]") + tail);
}
