/// What several formats say alike, in sentences for a reader.
#pragma once

#include <string>
#include <vector>

#include "checking/report.h"
#include "reports/summary.h"

/// The rule of an error that says why a candidate could not be checked.
constexpr const char* kNotChecked = "not-checked";

/// `texts` in one, with `separator` between two.
std::string joined(const std::vector<std::string>& texts, const char* separator);

/// `text` in `colour`, a terminal's escape sequence; empty for none.
std::string coloured(const std::string& text, const std::string& colour);

/// "error" or "warning".
std::string severity_word(Severity severity);

/// "1 error", "2 errors".
std::string counted(std::size_t count, const std::string& noun);

/// A leaf that was compared, with its datastore and value.
std::string value_text(const ReadValue& value);

/// What there is to say of the finding under its message, one line each: the node, what was
/// compared, and what to do.
std::vector<std::string> finding_lines(const Finding& finding);

/// The finding as compilers write theirs, with finding_lines() under it; between them `source`, the
/// lines at its place.
std::string finding_text(const Finding& finding, const std::string& colour = {},
                         const std::string& source = {});

/// What is told of the candidate as an error of `rule`.
Finding told(const std::string& rule, const std::string& message, const std::string& candidate);

/// What the report has to tell: why the candidate could not be checked, as an error of kNotChecked;
/// the findings, those with one cause together; what is only counted of a rule, as one more finding
/// of it. Each has a place, its file at least.
std::vector<Finding> told_findings(const Report& report);

/// Whether there is nothing to say of the candidate, but for what it changes, that a sum of all
/// does not say as well, so that it can be only counted.
bool is_clean(const Report& report);

/// What was checked and how much was found: "1 error, 0 warnings in 7 checks against running.json";
/// or that it could not be checked.
std::string result_text(const Report& report);

/// What a reader of the result must know as well, one sentence each: that no rule ran, what the
/// change removes, what was not checked.
std::vector<std::string> notes(const Report& report);

/// What of a configuration was not `done`, one sentence for each kind of reason: "3 nodes of other
/// modules not checked: a, b".
std::vector<std::string> unknown_data_texts(const UnknownData& data, const std::string& done);

/// That the run was ended: "interrupted: 3 candidates were not checked".
std::string not_reached_text(std::size_t count);

/// The result of all: "2 candidates: 1 error, 0 warnings in 9 checks, 1 refused, 1 not checked";
/// then how many findings each rule has, a line each.
std::vector<std::string> summary_lines(const Summary& summary);
