#include <algorithm>

#include "reports/fingerprint.h"
#include "reports/json_elements.h"
#include "reports/report_text.h"
#include "text/printable.h"

namespace {

class GitlabWriter final : public ReportWriter {
  public:
    using ReportWriter::ReportWriter;

    void add(const Report& report, const std::vector<Finding>& findings) override {
        last_ = report.candidate;
        for (const Finding& finding : findings) {
            add_issue(finding, finding.rule == kNotChecked           ? "blocker"
                               : finding.severity == Severity::error ? "critical"
                               : options_.accept_warnings            ? "info"
                                                                     : "minor");
        }
        for (const std::string& note : notes(report)) {
            add_issue(told("note", note, last_), "info");
        }
    }

    void finish(const Summary& /*summary*/, std::size_t not_reached) override {
        if (not_reached > 0) {
            add_issue(told(kNotChecked, not_reached_text(not_reached), last_), "blocker");
        }
        issues_.finish("\n");
    }

  private:
    /// GitLab needs a line: of a finding that has none the first.
    void add_issue(const Finding& finding, const char* severity) {
        const Location& place = finding.location;
        issues_.add({{"description", printable(finding.message)},
                     {"check_name", printable(finding.rule)},
                     {"severity", severity},
                     {"fingerprint", fingerprint(last_, finding)},
                     {"location",
                      {{"path", printable(repository_path(place.file))},
                       {"lines", {{"begin", std::max<std::size_t>(place.line, 1)}}}}},
                     {"content", {{"body", joined(finding_lines(finding), "\n")}}}});
    }

    JsonElements issues_{write_, "", 0};
    std::string last_;  ///< whose file is the place of what has none
};

}  // namespace

std::unique_ptr<ReportWriter> gitlab_writer(const ReportOptions& options, const Write& write) {
    return std::make_unique<GitlabWriter>(options, write);
}
