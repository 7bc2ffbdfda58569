#include <unistd.h>

#include <algorithm>

#include "reports/difference_report.h"
#include "reports/finding_groups.h"
#include "reports/report_text.h"
#include "reports/report_writer.h"
#include "reports/source_lines.h"
#include "terminal/output.h"
#include "text/printable.h"
#include "text/utf8.h"

namespace {

constexpr const char* kBold = "\033[1m";
constexpr const char* kRed = "\033[1;31m";
constexpr const char* kYellow = "\033[1;33m";
constexpr const char* kReset = "\033[0m";

class TextReport {
  public:
    TextReport(const Report& report, const TextStyle& style)
        : report_(report), style_(style), lines_(report.sources) {}

    std::string text() const {
        std::string text;
        for (const FindingGroup& block : finding_groups(report_)) {
            if (!block.cause.empty()) {
                text += place_of(*block.findings.front()) + coloured("note:", kBold) + " " +
                        printable(block.cause) + ": " + counted(block.findings.size(), "finding") +
                        "\n";
            }
            for (const Finding* const finding : block.findings) {
                text += finding_text(*finding);
            }
        }
        return text;
    }

  private:
    std::string coloured(const std::string& text, const char* start) const {
        return style_.colour ? start + text + kReset : text;
    }

    std::string place_of(const Finding& finding) const {
        const Location& place = finding.location;
        return printable(place.is_known() ? text_of(place) : report_.candidate) + ": ";
    }

    std::string finding_text(const Finding& finding) const {
        const char* const colour = finding.severity == Severity::error ? kRed : kYellow;
        std::string text = place_of(finding) +
                           coloured(severity_word(finding.severity) + ":", colour) + " " +
                           printable(finding.message) + "\n";
        if (style_.source_lines) {
            text += source_text(finding.location, colour);
        }
        for (const std::string& line : finding_lines(finding)) {
            text += "    " + line + "\n";
        }
        return text;
    }

    /// The line at `location` under its number, with a mark under the place.
    std::string source_text(const Location& location, const char* colour) const {
        const auto excerpt = lines_.excerpt(location);
        if (!excerpt) {
            return {};
        }
        const std::string number = std::to_string(location.line);
        const std::string margin(std::max<std::size_t>(number.size(), 5) - number.size(), ' ');
        const std::size_t size = std::max<std::size_t>(count_characters(excerpt->marked), 1);
        return margin + number + " | " + excerpt->before + excerpt->marked + excerpt->after + "\n" +
               std::string(margin.size() + number.size(), ' ') + " | " +
               std::string(count_characters(excerpt->before), ' ') +
               coloured("^" + std::string(size - 1, '~'), colour) + "\n";
    }

    const Report& report_;
    TextStyle style_;
    SourceLines lines_;
};

class TextWriter final : public ReportWriter {
  public:
    TextWriter(const ReportOptions& options, Write write)
        : options_(options),
          write_(std::move(write)),
          style_{options.quiet, wants_colour(options.colour), is_terminal(STDOUT_FILENO)} {}

    void add(const Report& report) override {
        if (!options_.counts_clean || !is_clean(report)) {
            write_(format_text(report, style_));
        }
    }

    void finish(const Summary& summary, std::size_t /*not_reached*/) override {
        if (!options_.quiet && (options_.counts_clean || summary.candidates > 1)) {
            write_(summary_text(summary) + "\n");
        }
    }

  private:
    ReportOptions options_;
    Write write_;
    TextStyle style_;
};

}  // namespace

std::string format_text(const Report& report, const TextStyle& style) {
    std::string text;
    if (report.changes) {
        text += report.changes->empty() ? "no changes\n"
                                        : format_difference_text(*report.changes, style.colour);
    }
    text += TextReport(report, style).text();
    if (style.quiet) {
        return text;
    }
    const std::string name = printable(report.candidate) + ": ";
    text += name + result_text(report) + "\n";
    for (const std::string& remark : remarks(report)) {
        text += name + remark + "\n";
    }
    return text;
}

std::unique_ptr<ReportWriter> text_writer(const ReportOptions& options, const Write& write) {
    return std::make_unique<TextWriter>(options, write);
}
