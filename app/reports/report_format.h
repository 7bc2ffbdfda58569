/// Reports as the operator or a pipeline reads them. Whatever comes from outside, names of files
/// included, goes through printable(): the text of every format is valid and forges nothing.
#pragma once

#include <string>
#include <vector>

struct ReportOptions {
    std::string format = "text";   ///< one of report_formats()
    bool accept_warnings = false;  ///< a warning is no failure
    bool quiet = false;            ///< findings only, in the formats for readers
    bool silent = false;           ///< nothing
    bool counts_clean = false;     ///< in text and github, one without findings is only counted
    std::string colour = "auto";   ///< when to colour text; see wants_colour()

    /// Whether whoever runs the command reads the report itself, the reasons in it as well.
    bool is_for_reader() const { return !silent && (format == "text" || format == "concise"); }
};

std::vector<std::string> report_formats();
