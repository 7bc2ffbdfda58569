/// Reports as the operator or a pipeline reads them. Whatever comes from outside, names of files
/// included, goes through printable(): the text of every format is valid and forges nothing.
#pragma once

#include <string>
#include <vector>

#include "checking/report.h"

struct ReportOptions {
    std::string format = "text";   ///< or "json" or "junit"
    bool accept_warnings = false;  ///< a warning is no failure
    std::size_t max_warnings = 0;  ///< nor are these many or fewer, in all reports together
    bool quiet = false;            ///< findings only, in the formats for readers
    bool silent = false;           ///< nothing

    bool accepts_warnings(const std::vector<Report>& reports) const;
};

/// The reports in the wanted format.
std::string format_reports(const std::vector<Report>& reports, const ReportOptions& options);

/// For a reader: each finding, and unless `quiet` what was checked: a few lines for each candidate,
/// one for all of several. With escape sequences when `colour`.
std::string format_text(const std::vector<Report>& reports, bool quiet, bool colour);

/// One JSON object, as docs/report.schema.json describes it.
std::string format_json(const std::vector<Report>& reports);

/// JUnit XML: a suite for each candidate, in it a test for each rule, always under the same name.
/// Warnings are failures unless accepted.
std::string format_junit(const std::vector<Report>& reports, bool accept_warnings);
