#include "reports/report_format.h"

#include "reports/report_stream.h"

std::string format_reports(const std::vector<Report>& reports, const ReportOptions& options) {
    std::string text;
    ReportStream stream(options, [&text](const std::string& part) { text += part; });
    for (const Report& report : reports) {
        stream.add(report);
    }
    stream.finish(0);
    return text;
}
