#include "output.h"

#include <unistd.h>

#include <cstdlib>
#include <system_error>

#include "cannot_judge.h"
#include "file_descriptor.h"

namespace {

/// Whether the UTF-8 text begins with a control character, of ASCII or of Latin-1.
bool begins_with_control(std::string_view text) {
    const auto byte = [&](std::size_t i) { return static_cast<unsigned char>(text[i]); };
    return byte(0) < 0x20U || byte(0) == 0x7fU ||
           (byte(0) == 0xc2U && text.size() > 1 && byte(1) >= 0x80U && byte(1) < 0xa0U);
}

}  // namespace

void print(const std::string& text) {
    try {
        write_all(STDOUT_FILENO, text);
    } catch (const std::system_error& error) {
        throw CannotJudge("standard output cannot be written: " + error.code().message());
    }
}

bool wants_colour() {
    const char* const no_colour = std::getenv("NO_COLOR");
    return isatty(STDOUT_FILENO) == 1 && (no_colour == nullptr || *no_colour == '\0');
}

std::string printable(std::string_view text) {
    constexpr std::string_view kDigits = "0123456789abcdef";
    std::string shown;
    for (; !text.empty(); text.remove_prefix(1)) {
        if (!begins_with_control(text)) {
            shown += text.front();
            continue;
        }
        if (text.front() == '\xc2') {
            text.remove_prefix(1);
        }
        const auto code = static_cast<unsigned char>(text.front());
        shown.append("\\x").append(1, kDigits[code >> 4U]).append(1, kDigits[code & 0xfU]);
    }
    return shown;
}

std::string complaint(std::string_view reason) {
    return "vrrp-valid: " + printable(reason) + "\n";
}
