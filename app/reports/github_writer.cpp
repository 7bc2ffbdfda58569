#include "reports/percent_encoding.h"
#include "reports/report_text.h"
#include "reports/report_writer.h"
#include "text/printable.h"

namespace {

/// `text` as a command's message, or with ":," as the value of one of its properties.
std::string escaped(const std::string& text, std::string_view more = {}) {
    return percent_encoded(text, [&](char c) {
        return c != '%' && c != '\n' && more.find(c) == std::string_view::npos;
    });
}

/// An annotation at `place`, of which as much is written as is known; its message has `lines`.
std::string command(const std::string& word, const Location& place, const std::string& title,
                    const std::vector<std::string>& lines) {
    std::string text = "::" + word + " ";
    text += place.file.empty() ? "" : "file=" + escaped(printable(place.file), ":,") + ",";
    text += place.line == 0 ? "" : "line=" + std::to_string(place.line) + ",";
    text += place.column == 0 ? "" : "col=" + std::to_string(place.column) + ",";
    return text + "title=" + escaped(printable(title), ":,") + "::" + escaped(joined(lines, "\n")) +
           "\n";
}

class GithubWriter final : public ReportWriter {
  public:
    using ReportWriter::ReportWriter;

    void add(const Report& report, const std::vector<Finding>& findings) override {
        if (options_.counts_clean && is_clean(report)) {
            return;
        }
        std::string text;
        for (const Finding& finding : findings) {
            const bool is_accepted =
                finding.severity == Severity::warning && options_.accept_warnings;
            std::vector<std::string> lines = finding_lines(finding);
            if (!finding.cause.empty()) {
                lines.insert(lines.begin(), "cause: " + printable(finding.cause));
            }
            lines.insert(lines.begin(), printable(finding.message));
            text += command(is_accepted ? "notice" : severity_word(finding.severity),
                            finding.location, finding.rule, lines);
        }
        std::vector<std::string> result = notes(report);
        result.insert(result.begin(), result_text(report));
        write_(text + command("notice", {report.candidate}, "vrrp-valid", result));
    }

    void finish(const Summary& summary, std::size_t not_reached) override {
        if (options_.counts_clean || !summary.notes.empty()) {
            write_(command("notice", {}, "vrrp-valid", summary_lines(summary)));
        }
        if (not_reached > 0) {
            write_(command("error", {}, kNotChecked, {not_reached_text(not_reached)}));
        }
    }
};

}  // namespace

std::unique_ptr<ReportWriter> github_writer(const ReportOptions& options, const Write& write) {
    return std::make_unique<GithubWriter>(options, write);
}
