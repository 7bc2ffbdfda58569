#include "reports/fingerprint.h"
#include "reports/json_elements.h"
#include "reports/report_text.h"
#include "text/printable.h"

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
    json["check_name"] = printable(finding.rule);
    json["fingerprint"] = fingerprint(report, finding);
    json["severity"] = finding.severity == Severity::error ? "critical" : warning;
    std::string body;
    for (const std::string& line : finding_lines(finding)) {
        body += line + "\n";
    }
    json["content"] = {{"body", body}};
    return json;
}

class GitlabWriter final : public ReportWriter {
  public:
    GitlabWriter(bool accept_warnings, const Write& write)
        : accept_warnings_(accept_warnings), issues_(write, "", 0) {}

    void add(const Report& report) override {
        last_.candidate = report.candidate;
        if (!report.failure.empty()) {
            add(issue(report, report.failure_at, report.failure), "could-not-be-checked",
                fingerprint_of_failure(report), "blocker");
        }
        for (const Finding& finding : report.findings) {
            issues_.add(to_json(report, finding, accept_warnings_));
        }
        for (const Omitted& rest : report.omitted) {
            add(issue(report, {}, omitted_text(rest)), printable(rest.rule),
                fingerprint_of_rest(report, rest.rule), rest.errors > 0 ? "critical" : "minor");
        }
        for (const std::string& note : notes(report)) {
            add(issue(report, {}, note), "note", fingerprint_of_rest(report, note), "info");
        }
    }

    void finish(const Summary& /*summary*/, std::size_t not_reached) override {
        if (not_reached > 0) {
            add(issue(last_, {}, not_reached_text(not_reached)), "interrupted",
                fingerprint_of_rest(last_, "interrupted"), "blocker");
        }
        issues_.finish("\n");
    }

  private:
    void add(Json issue, const std::string& name, const std::string& fingerprint,
             const char* severity) {
        issue["check_name"] = name;
        issue["fingerprint"] = fingerprint;
        issue["severity"] = severity;
        issues_.add(issue);
    }

    bool accept_warnings_;
    JsonElements issues_;
    Report last_;  ///< whose file is the place of what has none
};

}  // namespace

std::unique_ptr<ReportWriter> gitlab_writer(const ReportOptions& options, const Write& write) {
    return std::make_unique<GitlabWriter>(options.accept_warnings, write);
}
