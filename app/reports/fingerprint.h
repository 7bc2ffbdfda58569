/// What tells a finding from others, and stays the same when lines move.
#pragma once

#include <string>

#include "checking/report.h"

/// The fingerprint of `finding` in `report`, 64 hexadecimal digits: of the candidate's name, the
/// rule, the node and the message.
std::string fingerprint(const Report& report, const Finding& finding);

/// The same for a candidate that could not be checked.
std::string fingerprint_of_failure(const Report& report);

/// The same for the findings of a rule that the report only counts.
std::string fingerprint_of_rest(const Report& report, const std::string& selector);

/// The candidate's name in a repository: without "./" and the like.
std::string repository_path(const std::string& file);
