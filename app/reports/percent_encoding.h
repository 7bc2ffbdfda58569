/// Text in which some characters stand as "%2C".
#pragma once

#include <cctype>
#include <string>

#include "text/hex.h"

/// `text` with every byte of which `is_plain` says no in its percent encoding.
template <typename IsPlain>
std::string percent_encoded(const std::string& text, IsPlain is_plain) {
    std::string encoded;
    for (const char c : text) {
        if (is_plain(c)) {
            encoded += c;
            continue;
        }
        encoded += '%';
        for (const char digit : hex(static_cast<unsigned char>(c), 2)) {
            encoded += static_cast<char>(std::toupper(static_cast<unsigned char>(digit)));
        }
    }
    return encoded;
}
