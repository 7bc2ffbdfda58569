#include "reports/report_format.h"

#include "terminal/output.h"

std::string format_reports(const std::vector<Report>& reports, const std::string& format,
                           bool quiet) {
    if (quiet) {
        return {};
    }
    if (format == "json") {
        return format_json(reports);
    }
    return format == "junit" ? format_junit(reports) : format_text(reports, wants_colour());
}
