/// A place in a file, as an editor shows it.
#pragma once

#include <cstddef>
#include <string>

struct Location {
    std::string file;        ///< as the operator named it
    std::size_t line = 0;    ///< from 1; 0 when the place is not known
    std::size_t column = 0;  ///< from 1, in UTF-8 characters

    bool is_known() const { return line > 0; }
};

/// "file:line:column", or as much of it as is known.
inline std::string text_of(const Location& location) {
    std::string text = location.file;
    for (const std::size_t number : {location.line, location.column}) {
        if (number > 0) {
            text += ":" + std::to_string(number);
        }
    }
    return text;
}
