/// What tells one finding from others, and stays the same when lines move.
#pragma once

#include <string>
#include <string_view>

#include "checking/report.h"

/// 64 hexadecimal digits: of the candidate's name, and of the finding's rule, node and message.
std::string fingerprint(const std::string& candidate, const Finding& finding);

/// The 64 hexadecimal digits of `bytes`.
std::string sha256(std::string_view bytes);

/// The candidate's name in a repository: without "./" and the like.
std::string repository_path(const std::string& file);
