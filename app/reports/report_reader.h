/// Stored reports.
#pragma once

#include <string>
#include <vector>

#include "checking/report.h"

struct StoredReports {
    std::vector<Report> reports;
    std::size_t not_reached = 0;  ///< candidates of which there is no report
};

/// What check --format json has printed to the file `name`. Throws InputError when `text` is
/// something else, of another version, or was cut off.
StoredReports read_reports(const std::string& name, const std::string& text);
