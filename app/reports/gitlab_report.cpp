#include "reports/fingerprint.h"
#include "reports/json.h"
#include "reports/report_format.h"
#include "reports/sentences.h"
#include "terminal/output.h"

namespace {

Json issue(const Report& report, const Location& location, const std::string& description) {
    const std::string& file = location.is_known() ? location.file : report.candidate;
    return {{"description", printable(description)},
            {"location",
             {{"path", printable(repository_path(file))},
              {"lines", {{"begin", location.is_known() ? location.line : 1}}}}}};
}

Json to_json(const Report& report, const Finding& finding, bool accept_warnings) {
    Json json = issue(report, finding.location, finding.message);
    const char* const warning = accept_warnings ? "info" : "minor";
    json["check_name"] = printable(finding.selector);
    json["fingerprint"] = fingerprint(report, finding);
    json["severity"] = finding.severity == Severity::error ? "critical" : warning;
    std::string body;
    for (const std::string& line : finding_lines(finding)) {
        body += line + "\n";
    }
    json["content"] = {{"body", body}};
    return json;
}

}  // namespace

std::string format_gitlab(const std::vector<Report>& reports, const ReportOptions& options) {
    Json issues = Json::array();
    for (const Report& report : reports) {
        if (!report.failure.empty()) {
            Json json = issue(report, report.failure_at, report.failure);
            json["check_name"] = "could-not-be-checked";
            json["fingerprint"] = fingerprint_of_failure(report);
            json["severity"] = "blocker";
            issues.push_back(json);
        }
        for (const Finding& finding : report.findings) {
            issues.push_back(to_json(report, finding, options.accept_warnings));
        }
        for (const Omitted& rest : report.omitted) {
            Json json = issue(report, {}, omitted_text(rest));
            json["check_name"] = printable(rest.selector);
            json["fingerprint"] = fingerprint_of_rest(report, rest.selector);
            json["severity"] = rest.errors > 0 ? "critical" : "minor";
            issues.push_back(json);
        }
        for (const std::string& note : notes(report)) {
            Json json = issue(report, {}, note);
            json["check_name"] = "note";
            json["fingerprint"] = fingerprint_of_rest(report, note);
            json["severity"] = "info";
            issues.push_back(json);
        }
    }
    if (options.unreached > 0) {
        const Report last = reports.empty() ? Report() : reports.back();
        Json json = issue(last, {}, unreached_text(options.unreached));
        json["check_name"] = "interrupted";
        json["fingerprint"] = fingerprint_of_rest(last, "interrupted");
        json["severity"] = "blocker";
        issues.push_back(json);
    }
    return issues.dump(2) + "\n";
}
