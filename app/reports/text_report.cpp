#include "reports/difference_report.h"
#include "reports/report_format.h"
#include "reports/sentences.h"
#include "terminal/output.h"

namespace {

constexpr const char* kRed = "\033[1;31m";
constexpr const char* kYellow = "\033[1;33m";
constexpr const char* kReset = "\033[0m";

std::string severity_text(Severity severity, bool colour) {
    const std::string word = severity_word(severity) + ":";
    const char* const start = severity == Severity::error ? kRed : kYellow;
    return colour ? start + word + kReset : word;
}

std::string format_finding(const Report& report, const Finding& finding, bool colour) {
    const std::string place = place_text(finding.location);
    std::string text = (place.empty() ? printable(report.candidate) : place) + ": " +
                       severity_text(finding.severity, colour) + " ";
    std::string indent;
    for (const std::string& line : finding_lines(finding)) {
        text += indent + line + "\n";
        indent = "    ";
    }
    return text;
}

}  // namespace

std::string format_text(const std::vector<Report>& reports, bool quiet, bool colour) {
    std::string text;
    for (const Report& report : reports) {
        if (report.changes) {
            text += report.changes->empty() ? "no changes\n"
                                            : format_difference_text(*report.changes, colour);
        }
        for (const Finding& finding : report.findings) {
            text += format_finding(report, finding, colour);
        }
        if (quiet) {
            continue;
        }
        const std::string name = printable(report.candidate) + ": ";
        text += name + result_text(report) + "\n";
        for (const std::string& remark : remarks(report)) {
            text += name + remark + "\n";
        }
    }
    return quiet || reports.size() < 2 ? text : text + total_text(reports) + "\n";
}
