/// What tells one thing that is reported from others, and stays the same when lines move.
#pragma once

#include <initializer_list>
#include <string>

#include "checking/report.h"

/// 64 hexadecimal digits: of the candidate's name, and of the texts that tell it from what else is
/// said of the candidate.
std::string fingerprint(const Report& report, std::initializer_list<std::string> texts);

/// Of a finding: its rule, node and message.
std::string fingerprint(const Report& report, const Finding& finding);

/// The candidate's name in a repository: without "./" and the like.
std::string repository_path(const std::string& file);
