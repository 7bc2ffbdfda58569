/// What tells a finding from others, and stays the same when lines move.
#pragma once

#include <string>

#include "checking/report.h"

/// The fingerprint of `finding` in `report`, 64 hexadecimal digits: of the candidate's name, the
/// rule, the node and the message.
std::string fingerprint(const Report& report, const Finding& finding);

/// The same for a candidate that could not be checked.
std::string fingerprint_of_failure(const Report& report);

/// The same for what there is to say of the candidate beside its findings, as `subject` names it.
std::string fingerprint_of_rest(const Report& report, const std::string& subject);

/// The candidate's name in a repository: without "./" and the like.
std::string repository_path(const std::string& file);
