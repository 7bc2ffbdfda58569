/// Reports read back from JSON.
#pragma once

#include <string>
#include <vector>

#include "checking/report.h"

struct StoredReports {
    std::vector<Report> reports;
    std::size_t not_reached = 0;  ///< candidates of which there is no report
};

/// What format_json() has written to the file `name`. Throws InputError when `text` is something
/// else, or was cut off.
StoredReports reports_from_json(const std::string& name, const std::string& text);
