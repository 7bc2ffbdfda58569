#include "reports/difference_report.h"
#include "reports/report_format.h"
#include "terminal/output.h"

namespace {

constexpr const char* kRed = "\033[1;31m";
constexpr const char* kYellow = "\033[1;33m";
constexpr const char* kReset = "\033[0m";

std::string severity_word(Severity severity, bool colour) {
    const std::string word = severity == Severity::error ? "error" : "warning";
    const char* const start = severity == Severity::error ? kRed : kYellow;
    return colour ? start + word + kReset : word;
}

std::string counted(std::size_t count, const std::string& noun) {
    return std::to_string(count) + " " + noun + (count == 1 ? "" : "s");
}

std::string counts(std::size_t errors, std::size_t warnings, std::size_t requests) {
    return counted(errors, "error") + ", " + counted(warnings, "warning") + " in " +
           counted(requests, "request");
}

std::string format_finding(const Finding& finding, bool colour) {
    std::string text = severity_word(finding.severity, colour) + ": " + printable(finding.place) +
                       "\n    " + printable(finding.message) + "\n";
    for (const ReadValue& value : finding.values) {
        text.append("    ").append(value.datastore).append(": ");
        text.append(printable(value.leaf + " " + value.value)).append("\n");
    }
    return text + "    at " + printable(finding.path) + " (" + finding.selector + ")\n";
}

std::string format_report(const Report& report, bool colour) {
    if (!report.failure.empty()) {
        return report.candidate + ": not checked\n";
    }
    std::string text;
    if (report.changes) {
        text += report.changes->empty() ? "no changes\n"
                                        : format_difference_text(*report.changes, colour);
    }
    for (const Finding& finding : report.findings) {
        text += format_finding(finding, colour);
    }
    const std::string running =
        report.running.empty() ? "an empty running configuration" : report.running;
    return text + report.candidate + ": " +
           counts(report.count(Severity::error), report.count(Severity::warning), report.requests) +
           ", checked against " + running + "\n";
}

}  // namespace

std::string format_text(const std::vector<Report>& reports, bool colour) {
    std::string text;
    std::size_t errors = 0;
    std::size_t warnings = 0;
    std::size_t requests = 0;
    for (const Report& report : reports) {
        text += format_report(report, colour);
        errors += report.count(Severity::error);
        warnings += report.count(Severity::warning);
        requests += report.requests;
    }
    if (reports.size() > 1) {
        text +=
            counted(reports.size(), "candidate") + ": " + counts(errors, warnings, requests) + "\n";
    }
    return text;
}
