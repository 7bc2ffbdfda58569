/// Reports as the operator or a pipeline reads them.
#pragma once

#include <string>
#include <vector>

#include "report.h"

/// For a reader: each finding, and a closing line with the counts. With escape sequences when
/// `colour`.
std::string format_text(const Report& report, bool colour);

/// One JSON object: candidate, valid, requests, findings.
std::string format_json(const Report& report);
