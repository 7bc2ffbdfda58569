#include "reports/report_format.h"

#include "terminal/output.h"

bool ReportOptions::accepts_warnings(const std::vector<Report>& reports) const {
    std::size_t warnings = 0;
    for (const Report& report : reports) {
        warnings += report.count(Severity::warning);
    }
    return accept_warnings || warnings <= max_warnings;
}

std::string format_reports(const std::vector<Report>& reports, const ReportOptions& options) {
    if (options.silent) {
        return {};
    }
    if (options.format == "json") {
        return format_json(reports);
    }
    if (options.format == "junit") {
        return format_junit(reports, options.accepts_warnings(reports));
    }
    return format_text(reports, options.quiet, wants_colour());
}
