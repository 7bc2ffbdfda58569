#include <unistd.h>

#include <algorithm>

#include "reports/difference_text.h"
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

std::string coloured(const std::string& text, const char* colour, const TextStyle& style) {
    return style.colour ? colour + text + "\033[0m" : text;
}

std::string place_of(const Finding& finding, const Report& report) {
    const Location& place = finding.location;
    return printable(place.is_known() ? text_of(place) : report.candidate) + ": ";
}

/// The line at `place` under its number, with a mark under the place.
std::string source_text(const SourceText& source, const Location& place, const char* colour,
                        const TextStyle& style) {
    const Excerpt line = excerpt(source, place.line, place.column);
    std::string number = std::to_string(place.line);
    number.insert(0, std::max<std::size_t>(number.size(), 5) - number.size(), ' ');
    const std::size_t size = std::max<std::size_t>(count_characters(line.marked), 1);
    return number + " | " + line.before + line.marked + line.after + "\n" +
           std::string(number.size(), ' ') + " | " +
           std::string(count_characters(line.before), ' ') +
           coloured("^" + std::string(size - 1, '~'), colour, style) + "\n";
}

std::string finding_text(const Finding& finding, const Report& report, const TextStyle& style) {
    const char* const colour = finding.severity == Severity::error ? kRed : kYellow;
    std::string text = place_of(finding, report) +
                       coloured(severity_word(finding.severity) + ":", colour, style) + " " +
                       printable(finding.message) + "\n";
    const SourceText* const source = source_of(report, finding.location);
    if (style.source_lines && source != nullptr) {
        text += source_text(*source, finding.location, colour, style);
    }
    for (const std::string& line : finding_lines(finding)) {
        text += "    " + line + "\n";
    }
    return text;
}

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
        const bool has_more = summary.candidates > 1 || !summary.notes.empty();
        if (!options_.quiet && (options_.counts_clean || has_more)) {
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
    for (const FindingGroup& group : finding_groups(report)) {
        if (!group.cause.empty()) {
            text += place_of(*group.findings.front(), report) + coloured("note:", kBold, style) +
                    " " + printable(group.cause) + ": " +
                    counted(group.findings.size(), "finding") + "\n";
        }
        for (const Finding* const finding : group.findings) {
            text += finding_text(*finding, report, style);
        }
    }
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
