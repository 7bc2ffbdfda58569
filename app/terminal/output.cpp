#include "terminal/output.h"

#include <unistd.h>

#include <algorithm>
#include <array>
#include <cstdlib>
#include <cstring>
#include <system_error>

#include "errors/input_error.h"
#include "files/file_descriptor.h"

namespace {

struct Character {
    char32_t code;
    std::size_t size;  ///< in bytes; 0 when there is no character
};

/// The UTF-8 character at the front of `text`, which is not empty.
Character first_character(std::string_view text) {
    constexpr std::array<char32_t, 5> kLeast = {0, 0, 0x80, 0x800, 0x10000};
    const auto first = static_cast<unsigned char>(text[0]);
    if (first < 0x80U) {
        return {first, 1};
    }
    const std::size_t size = first < 0xc2U ? 0 : first < 0xe0U ? 2 : first < 0xf0U ? 3 : 4;
    if (size == 0 || first > 0xf4U || text.size() < size) {
        return {0, 0};
    }
    char32_t code = first & (0xffU >> (size + 1));
    for (const char byte : text.substr(1, size - 1)) {
        if ((static_cast<unsigned char>(byte) & 0xc0U) != 0x80U) {
            return {0, 0};
        }
        code = code << 6U | (static_cast<unsigned char>(byte) & 0x3fU);
    }
    const bool is_surrogate = code >= 0xd800 && code < 0xe000;
    return {code, code < kLeast[size] || is_surrogate || code > 0x10ffff ? 0 : size};
}

/// Characters that no reader sees but a terminal, a page or a parser obeys or refuses: controls,
/// those that turn the direction of writing, line and paragraph ends, and what is no character.
bool is_control(char32_t code) {
    return code < 0x20 || (code >= 0x7f && code < 0xa0) || code == 0x61c || code == 0x200e ||
           code == 0x200f || (code >= 0x2028 && code <= 0x202e) ||
           (code >= 0x2066 && code <= 0x2069) || (code & 0xfffeU) == 0xfffe;
}

/// "\x0a", "\u202e".
std::string escaped(char32_t code) {
    constexpr std::string_view kDigits = "0123456789abcdef";
    std::string digits;
    for (; code > 0; code >>= 4U) {
        digits.insert(digits.begin(), kDigits[code & 0xfU]);
    }
    const std::size_t width = digits.size() <= 2 ? 2 : 4;
    digits.insert(0, width - std::min(width, digits.size()), '0');
    return (width == 2 ? "\\x" : "\\u") + digits;
}

/// What standard output is called in messages.
std::string output_name = "standard output";

bool is_set(const char* variable) {
    const char* const value = std::getenv(variable);
    return value != nullptr && *value != '\0';
}

}  // namespace

void print(const std::string& text) {
    try {
        write_all(STDOUT_FILENO, text);
    } catch (const std::system_error& error) {
        throw InputError(output_name + " cannot be written: " + error.code().message());
    }
}

void name_output(const std::string& name) {
    output_name = name;
}

bool is_terminal(int fd) {
    const char* const kind = std::getenv("TERM");
    return isatty(fd) == 1 && (kind == nullptr || std::strcmp(kind, "dumb") != 0);
}

void choose_colour(const std::string& when) {
    if (when == "always") {
        setenv("CLICOLOR_FORCE", "1", 1);
    } else if (when == "never") {
        setenv("NO_COLOR", "1", 1);
        unsetenv("CLICOLOR_FORCE");
    }
}

bool wants_colour() {
    return is_set("CLICOLOR_FORCE") || (is_terminal(STDOUT_FILENO) && !is_set("NO_COLOR"));
}

std::string printable(std::string_view text) {
    std::string shown;
    while (!text.empty()) {
        const auto [code, size] = first_character(text);
        if (size == 0) {
            shown += escaped(static_cast<unsigned char>(text[0]));
        } else if (is_control(code)) {
            shown += escaped(code);
        } else {
            shown += text.substr(0, size);
        }
        text.remove_prefix(std::max<std::size_t>(size, 1));
    }
    return shown;
}

std::string complaint(std::string_view reason) {
    return "vrrp-valid: " + printable(reason) + "\n";
}
