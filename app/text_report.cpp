#include "report_format.h"

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

}  // namespace

std::string format_text(const Report& report, bool colour) {
    std::string text;
    for (const Finding& finding : report.findings) {
        text += severity_word(finding.severity, colour) + " " + finding.path + "\n    " +
                finding.message + "\n";
    }
    return text + report.candidate + ": " + counted(report.count(Severity::error), "error") + ", " +
           counted(report.count(Severity::warning), "warning") + " in " +
           counted(report.requests, "request") + ", judged against " +
           (report.running.empty() ? "an empty running configuration" : report.running) + "\n";
}
