#include "text/printable.h"

#include <algorithm>
#include <array>

#include "text/hex.h"
#include "text/utf8.h"

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
        if (begins_character(byte)) {
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
    return code <= 0xff ? "\\x" + hex(code, 2) : "\\u" + hex(code, 4);
}

bool is_excluded(char32_t code) {
    const bool is_blank = code == '\t' || code == '\n' || code == '\r';
    return (code < 0x20 && !is_blank) || (code >= 0xfdd0 && code <= 0xfdef) ||
           (code & 0xfffeU) == 0xfffe;
}

}  // namespace

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

std::string excluded_character(std::string_view text) {
    while (!text.empty()) {
        const auto [code, size] = first_character(text);
        if (size == 0 || is_excluded(code)) {
            return escaped(size == 0 ? static_cast<unsigned char>(text[0]) : code);
        }
        text.remove_prefix(size);
    }
    return {};
}
