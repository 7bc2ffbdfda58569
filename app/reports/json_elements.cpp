#include "reports/json_elements.h"

std::string indented(const Json& json, const std::string& indent) {
    std::string text;
    for (const char c : json.dump(2)) {
        text += c;
        text += c == '\n' ? indent : "";
    }
    return text;
}

void JsonElements::add(const Json& element) {
    const std::string inner = indent_ + "  ";
    write_((is_begun_ ? "," : head_ + "[") + "\n" + inner + indented(element, inner));
    is_begun_ = true;
}

void JsonElements::finish(const std::string& tail) {
    write_((is_begun_ ? "\n" + indent_ : head_ + "[") + "]" + tail);
}
