/// Numbers in hexadecimal digits.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

constexpr std::string_view kHexDigits = "0123456789abcdef";

/// `number` in at least `width` digits: "0a" in two.
inline std::string hex(std::uint32_t number, std::size_t width) {
    std::string digits;
    for (; number > 0 || digits.size() < width; number >>= 4U) {
        digits.insert(digits.begin(), kHexDigits[number & 0xfU]);
    }
    return digits;
}
