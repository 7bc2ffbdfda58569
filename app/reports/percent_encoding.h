/// Text in which some characters stand as "%2C".
#pragma once

#include <array>
#include <cstdio>
#include <string>

/// `text` with every byte of which `is_plain` says no in its percent encoding.
template <typename IsPlain>
std::string percent_encoded(const std::string& text, IsPlain is_plain) {
    std::string encoded;
    for (const char c : text) {
        std::array<char, 4> code{c};
        if (!is_plain(c)) {
            static_cast<void>(
                std::snprintf(code.data(), code.size(), "%%%02X", static_cast<unsigned char>(c)));
        }
        encoded += code.data();
    }
    return encoded;
}
