#include "reports/report_format.h"

#include "terminal/output.h"

std::string format_reports(const std::vector<Report>& reports, const ReportOptions& options) {
    if (options.silent) {
        return {};
    }
    if (options.format == "json") {
        return format_json(reports);
    }
    if (options.format == "junit") {
        return format_junit(reports, options.accept_warnings);
    }
    return format_text(reports, options.quiet, wants_colour());
}
