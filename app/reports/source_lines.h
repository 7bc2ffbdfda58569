/// Lines of a configuration, as they are shown beside a finding.
#pragma once

#include <string>

#include "checking/report.h"

/// A source line around a place. All parts are printable; what is secret is told as such.
struct Excerpt {
    std::string before;
    std::string marked;  ///< the name at the place; empty when there is none
    std::string after;
};

/// The text that the line of `location` is in; null when the report does not hold it.
const SourceText* source_of(const Report& report, const Location& location);

/// The line `line` of `source`, of a long one what is near `column`; nothing is marked for column
/// 0.
Excerpt excerpt(const SourceText& source, std::size_t line, std::size_t column);
