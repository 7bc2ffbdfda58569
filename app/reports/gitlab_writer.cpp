#include "reports/fingerprint.h"
#include "reports/json_elements.h"
#include "reports/report_text.h"
#include "text/printable.h"

namespace {

/// An issue of GitLab, which needs a place: without a location the candidate's first line.
Json issue(const Report& report, const Location& location, const std::string& description,
           const std::string& name, const char* severity, const std::string& fingerprint) {
    const std::string& file = location.is_known() ? location.file : report.candidate;
    return {{"description", printable(description)},
            {"check_name", printable(name)},
            {"severity", severity},
            {"fingerprint", fingerprint},
            {"location",
             {{"path", printable(repository_path(file))},
              {"lines", {{"begin", location.is_known() ? location.line : 1}}}}}};
}

class GitlabWriter final : public ReportWriter {
  public:
    GitlabWriter(bool accept_warnings, const Write& write)
        : warning_(accept_warnings ? "info" : "minor"), issues_(write, "", 0) {}

    void add(const Report& report) override {
        last_.candidate = report.candidate;
        if (!report.failure.empty()) {
            issues_.add(issue(report, report.failure_at, report.failure, "could-not-be-checked",
                              "blocker", fingerprint(report, {})));
        }
        for (const Finding& finding : report.findings) {
            const bool is_error = finding.severity == Severity::error;
            Json json = issue(report, finding.location, finding.message, finding.rule,
                              is_error ? "critical" : warning_, fingerprint(report, finding));
            std::string body;
            for (const std::string& line : finding_lines(finding)) {
                body += line + "\n";
            }
            json["content"] = {{"body", body}};
            issues_.add(json);
        }
        for (const Omitted& rest : report.omitted) {
            issues_.add(issue(report, {}, omitted_text(rest), rest.rule,
                              rest.errors > 0 ? "critical" : warning_,
                              fingerprint(report, {rest.rule})));
        }
        for (const std::string& note : notes(report)) {
            issues_.add(issue(report, {}, note, "note", "info", fingerprint(report, {note})));
        }
    }

    void finish(const Summary& /*summary*/, std::size_t not_reached) override {
        if (not_reached > 0) {
            issues_.add(issue(last_, {}, not_reached_text(not_reached), "interrupted", "blocker",
                              fingerprint(last_, {"interrupted"})));
        }
        issues_.finish("\n");
    }

  private:
    const char* warning_;  ///< its severity
    JsonElements issues_;
    Report last_;  ///< whose file is the place of what has none
};

}  // namespace

std::unique_ptr<ReportWriter> gitlab_writer(const ReportOptions& options, const Write& write) {
    return std::make_unique<GitlabWriter>(options.accept_warnings, write);
}
