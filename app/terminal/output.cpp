#include "terminal/output.h"

#include <unistd.h>

#include <cstdlib>
#include <system_error>

#include "errors/cannot_check.h"
#include "files/file_descriptor.h"

namespace {

unsigned char byte_at(std::string_view text, std::size_t index) {
    return index < text.size() ? static_cast<unsigned char>(text[index]) : 0;
}

/// How many bytes the UTF-8 character at the front of `text` has; 0 when there is none.
std::size_t character_size(std::string_view text) {
    const unsigned char first = byte_at(text, 0);
    const std::size_t size = first < 0x80U    ? 1
                             : first < 0xc2U  ? 0
                             : first < 0xe0U  ? 2
                             : first < 0xf0U  ? 3
                             : first <= 0xf4U ? 4
                                              : 0;
    for (std::size_t i = 1; i < size; ++i) {
        if ((byte_at(text, i) & 0xc0U) != 0x80U) {
            return 0;
        }
    }
    return size;
}

/// Whether the first byte of `text` is, or begins, a control character of ASCII or Latin-1.
bool begins_with_control(std::string_view text) {
    const unsigned char first = byte_at(text, 0);
    return first < 0x20U || first == 0x7fU || (first == 0xc2U && byte_at(text, 1) < 0xa0U);
}

}  // namespace

void print(const std::string& text) {
    try {
        write_all(STDOUT_FILENO, text);
    } catch (const std::system_error& error) {
        throw CannotCheck("standard output cannot be written: " + error.code().message());
    }
}

bool wants_colour() {
    const char* const no_colour = std::getenv("NO_COLOR");
    return isatty(STDOUT_FILENO) == 1 && (no_colour == nullptr || *no_colour == '\0');
}

std::string printable(std::string_view text) {
    constexpr std::string_view kDigits = "0123456789abcdef";
    std::string shown;
    while (!text.empty()) {
        const std::size_t size = character_size(text);
        if (size > 0 && !begins_with_control(text)) {
            shown += text.substr(0, size);
            text.remove_prefix(size);
            continue;
        }
        text.remove_prefix(size == 2 ? 1
                                     : 0);  // of a Latin-1 control character the second byte tells
        const unsigned char code = byte_at(text, 0);
        shown.append("\\x").append(1, kDigits[code >> 4U]).append(1, kDigits[code & 0xfU]);
        text.remove_prefix(1);
    }
    return shown;
}

std::string complaint(std::string_view reason) {
    return "vrrp-valid: " + printable(reason) + "\n";
}
