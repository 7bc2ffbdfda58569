/// Reports as the operator or a pipeline reads them.
#pragma once

#include <string>
#include <vector>

#include "report.h"

/// For a reader: each finding, a line with the counts for each candidate, and one for all of
/// several. With escape sequences when `colour`.
std::string format_text(const std::vector<Report>& reports, bool colour);

/// One JSON object: candidate, valid, requests, findings; an array of them for several candidates.
/// One that could not be judged has `error` in place of all but the candidate.
std::string format_json(const std::vector<Report>& reports);

/// JUnit XML: a suite for each candidate, a failed test for each finding, a passed one for each
/// rule without.
std::string format_junit(const std::vector<Report>& reports);
