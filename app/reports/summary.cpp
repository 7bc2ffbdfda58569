#include "reports/summary.h"

void Summary::add(const Report& report) {
    ++candidates;
    errors += report.count(Severity::error);
    warnings += report.count(Severity::warning);
    requests += report.requests;
    not_checked += report.failure.empty() ? 0 : 1;
    unknown_nodes += report.unknown_data.nodes;
}

void Summary::add_unreached(std::size_t count) {
    candidates += count;
    not_checked += count;
}

Summary summary_of(const std::vector<Report>& reports) {
    Summary summary;
    for (const Report& report : reports) {
        summary.add(report);
    }
    return summary;
}
