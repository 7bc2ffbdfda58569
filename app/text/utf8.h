/// Characters in UTF-8.
#pragma once

#include <algorithm>
#include <cstddef>
#include <string_view>

/// Whether `byte` is the first of a character, or all of it.
inline bool begins_character(char byte) {
    return (static_cast<unsigned char>(byte) & 0xc0U) != 0x80U;
}

/// How many characters `text` has.
inline std::size_t count_characters(std::string_view text) {
    return static_cast<std::size_t>(std::count_if(text.begin(), text.end(), begins_character));
}

/// Where the character of `text` that begins at `at` ends.
inline std::size_t end_of_character(std::string_view text, std::size_t at) {
    for (++at; at < text.size() && !begins_character(text[at]); ++at) {
    }
    return at;
}
