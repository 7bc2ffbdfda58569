/// Reports as the operator or a pipeline reads them. Whatever comes from outside, names of files
/// included, goes through printable(): the text of every format is valid and forges nothing.
#pragma once

#include <string>
#include <vector>

#include "checking/report.h"

struct ReportOptions {
    std::string format = "text";   ///< or another of report_formats()
    bool accept_warnings = false;  ///< a warning is no failure
    std::size_t max_warnings = 0;  ///< nor are these many or fewer, in all reports together
    bool quiet = false;            ///< findings only, in the formats for readers
    bool silent = false;           ///< nothing
    bool counts_clean = false;     ///< in text, a candidate without findings is only counted
    std::size_t unreached = 0;     ///< candidates without a report, since the run was ended

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

/// For a reader: each finding as compilers write theirs, those with one cause together; what was
/// checked in a few lines for each candidate; one line for all of several.
std::string format_text(const std::vector<Report>& reports, const TextStyle& style);

/// One JSON object, as docs/report.schema.json describes it.
std::string format_json(const std::vector<Report>& reports, const ReportOptions& options);

/// JUnit XML: a suite for each candidate, in it a test for each rule, always under the same name.
std::string format_junit(const std::vector<Report>& reports, const ReportOptions& options);

/// Workflow commands of GitHub: an annotation for each finding, and one for the result.
std::string format_github(const std::vector<Report>& reports, const ReportOptions& options);

/// A code quality report of GitLab: an array of issues.
std::string format_gitlab(const std::vector<Report>& reports, const ReportOptions& options);

/// SARIF 2.1.0, with the rules as the model describes them.
std::string format_sarif(const std::vector<Report>& reports, const ReportOptions& options);

/// A page for the change ticket: one file that needs neither network nor script.
std::string format_html(const std::vector<Report>& reports, const ReportOptions& options);
