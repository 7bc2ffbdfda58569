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

/// An annotation at `place`, of which as much is written as is known.
std::string command(const std::string& word, const Location& place, const std::string& title,
                    const std::string& message) {
    std::string text = "::" + word + " ";
    text += place.file.empty() ? "" : "file=" + escaped(printable(place.file), ":,") + ",";
    text += place.line == 0 ? "" : "line=" + std::to_string(place.line) + ",";
    text += place.column == 0 ? "" : "col=" + std::to_string(place.column) + ",";
    return text + "title=" + escaped(printable(title), ":,") + "::" + escaped(message) + "\n";
}

std::string message_of(const Finding& finding) {
    std::string message = printable(finding.message);
    if (!finding.cause.empty()) {
        message += "\ncause: " + printable(finding.cause);
    }
    for (const std::string& line : finding_lines(finding)) {
        message += "\n" + line;
    }
    return message;
}

class GithubWriter final : public ReportWriter {
  public:
    GithubWriter(const ReportOptions& options, Write write)
        : options_(options), write_(std::move(write)) {}

    void add(const Report& report) override {
        if (options_.counts_clean && is_clean(report)) {
            return;
        }
        const Location file{report.candidate};
        const auto place = [&](const Location& location) {
            return location.is_known() ? location : file;
        };
        std::string text;
        if (!report.failure.empty()) {
            text += command("error", place(report.failure_at), "could not be checked",
                            printable(report.failure));
        }
        for (const Finding& finding : report.findings) {
            const bool is_accepted =
                finding.severity == Severity::warning && options_.accept_warnings;
            text += command(is_accepted ? "notice" : severity_word(finding.severity),
                            place(finding.location), finding.rule, message_of(finding));
        }
        std::string result = result_text(report);
        for (const std::string& remark : remarks(report)) {
            result += "\n" + remark;
        }
        write_(text + command("notice", file, "vrrp-valid", result));
    }

    void finish(const Summary& summary, std::size_t not_reached) override {
        if (options_.counts_clean || !summary.notes.empty()) {
            write_(command("notice", {}, "vrrp-valid", summary_text(summary)));
        }
        if (not_reached > 0) {
            write_(command("error", {}, "interrupted", not_reached_text(not_reached)));
        }
    }

  private:
    ReportOptions options_;
    Write write_;
};

}  // namespace

std::unique_ptr<ReportWriter> github_writer(const ReportOptions& options, const Write& write) {
    return std::make_unique<GithubWriter>(options, write);
}
