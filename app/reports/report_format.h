/// Reports as the operator or a pipeline reads them. Whatever comes from outside, names of files
/// included, goes through printable(): the text of every format is valid and forges nothing.
#pragma once

#include <string>
#include <vector>

#include "checking/report.h"

struct ReportOptions {
    std::string format = "text";   ///< one of report_formats()
    bool accept_warnings = false;  ///< a warning is no failure
    std::size_t max_warnings = 0;  ///< nor are these many or fewer, in all reports together
    bool quiet = false;            ///< findings only, in the formats for readers
    bool silent = false;           ///< nothing
    bool counts_clean = false;     ///< in text and github, one without findings is only counted
    std::string colour = "auto";   ///< when to colour text; see wants_colour()

    /// Whether a run with so many warnings is no failure.
    bool accepts(std::size_t warnings) const { return accept_warnings || warnings <= max_warnings; }
};

std::vector<std::string> report_formats();

/// The reports in the wanted format.
std::string format_reports(const std::vector<Report>& reports, const ReportOptions& options);

struct TextStyle {
    bool quiet = false;         ///< findings only
    bool colour = false;        ///< with escape sequences
    bool source_lines = false;  ///< with the line that a finding is in
};

/// The report for a reader.
std::string format_text(const Report& report, const TextStyle& style);
