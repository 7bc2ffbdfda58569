/// Reports in JSON, both ways.
#pragma once

#include <nlohmann/json.hpp>

#include "checking/report.h"
#include "reports/summary.h"

// Ordered, so that an object reads in the order in which it is described.
using Json = nlohmann::ordered_json;

/// Of documents that name their form; members may be added under the same major version.
constexpr const char* kFormatVersion = "2.0";

/// `report` as docs/report.schema.json describes it; every text is printable.
Json report_to_json(const Report& report);

/// The report that report_to_json() has written. Throws Json::exception or std::domain_error for
/// anything else.
Report report_from_json(const Json& json);

/// The same for what all reports of a document come to.
Json summary_to_json(const Summary& summary);
Summary summary_from_json(const Json& json);

/// One JSON object: the names of the two files, and the changes and what was not compared as a
/// report has them.
std::string format_difference_json(const std::string& running, const std::string& candidate,
                                   const std::vector<Change>& changes,
                                   const UnknownData& not_compared);
