/// Reports as the operator or a pipeline reads them.
#pragma once

#include <string>
#include <vector>

#include "checking/report.h"

/// The reports in `format`, "text", "json" or "junit"; nothing when `quiet`.
std::string format_reports(const std::vector<Report>& reports, const std::string& format,
                           bool quiet);

/// For a reader: each finding, a line with the counts for each candidate, and one for all of
/// several. With escape sequences when `colour`.
std::string format_text(const std::vector<Report>& reports, bool colour);

/// One JSON object: candidate, valid, requests, findings; an array of them for several candidates.
/// One that could not be checked has `error` in place of all but the candidate.
std::string format_json(const std::vector<Report>& reports);

/// JUnit XML: a suite for each candidate, a failed test for each finding, a passed one for each
/// rule without.
std::string format_junit(const std::vector<Report>& reports);
