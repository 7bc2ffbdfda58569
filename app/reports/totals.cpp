#include "reports/totals.h"

void Totals::add(const Report& report) {
    ++candidates;
    errors += report.count(Severity::error);
    warnings += report.count(Severity::warning);
    requests += report.requests;
    unchecked += report.failure.empty() ? 0 : 1;
    skipped += report.skipped.nodes;
}

void Totals::add_unreached(std::size_t count) {
    candidates += count;
    unchecked += count;
}

Totals total_of(const std::vector<Report>& reports) {
    Totals totals;
    for (const Report& report : reports) {
        totals.add(report);
    }
    return totals;
}
