#include <unistd.h>

#include <algorithm>

#include "reports/difference_text.h"
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

/// The line at `place` under its number, with a mark in `colour` under the place.
std::string source_text(const SourceText& source, const Location& place, const char* colour) {
    const Excerpt line = excerpt(source, place.line, place.column);
    std::string number = std::to_string(place.line);
    number.insert(0, std::max<std::size_t>(number.size(), 5) - number.size(), ' ');
    const std::size_t size = std::max<std::size_t>(count_characters(line.marked), 1);
    return number + " | " + line.before + line.marked + line.after + "\n" +
           std::string(number.size(), ' ') + " | " +
           std::string(count_characters(line.before), ' ') +
           coloured("^" + std::string(size - 1, '~'), colour) + "\n";
}

class TextWriter final : public ReportWriter {
  public:
    using ReportWriter::ReportWriter;

    void add(const Report& report, const std::vector<Finding>& findings) override {
        const bool has_changes = report.changes && !report.changes->empty();
        if (options_.counts_clean && is_clean(report) && !has_changes) {
            return;
        }
        std::string text;
        if (report.changes) {
            text +=
                has_changes ? format_difference_text(*report.changes, has_colour_) : "no changes\n";
        }
        std::string cause;
        for (const Finding& finding : findings) {
            if (finding.cause != cause && !finding.cause.empty()) {
                text += printable(text_of(finding.location)) + ": " +
                        coloured("note:", has_colour_ ? kBold : "") + " " +
                        printable(finding.cause) + ":\n";
            }
            cause = finding.cause;
            const bool is_error = finding.severity == Severity::error;
            const char* const colour = !has_colour_ ? "" : is_error ? kRed : kYellow;
            const Location& place = finding.location;
            const SourceText* const source = has_lines_ ? source_of(report, place) : nullptr;
            text += finding_text(finding, colour,
                                 source == nullptr ? "" : source_text(*source, place, colour));
        }
        if (!options_.quiet) {
            const std::string name = printable(report.candidate) + ": ";
            text += name + result_text(report) + "\n";
            for (const std::string& note : notes(report)) {
                text += name + note + "\n";
            }
        }
        write_(text);
    }

    void finish(const Summary& summary, std::size_t /*not_reached*/) override {
        const bool has_more = summary.candidates > 1 || !summary.notes.empty();
        if (!options_.quiet && (options_.counts_clean || has_more)) {
            write_(joined(summary_lines(summary), "\n") + "\n");
        }
    }

  private:
    const bool has_colour_ = wants_colour(options_.colour);
    const bool has_lines_ = has_colour_ || is_terminal(STDOUT_FILENO);  ///< those of findings
};

/// Editors need a line and a column: what has none is at the first.
class ConciseWriter final : public ReportWriter {
  public:
    using ReportWriter::ReportWriter;

    void add(const Report& /*report*/, const std::vector<Finding>& findings) override {
        for (const Finding& finding : findings) {
            const auto& [file, line, column] = finding.location;
            const std::size_t least = 1;
            write_(printable(text_of({file, std::max(line, least), std::max(column, least)}) +
                             ": " + severity_word(finding.severity) + ": " + finding.message +
                             " [" + finding.rule + "]") +
                   "\n");
        }
    }

    void finish(const Summary& /*summary*/, std::size_t /*not_reached*/) override {}
};

}  // namespace

std::unique_ptr<ReportWriter> text_writer(const ReportOptions& options, const Write& write) {
    return std::make_unique<TextWriter>(options, write);
}

std::unique_ptr<ReportWriter> concise_writer(const ReportOptions& options, const Write& write) {
    return std::make_unique<ConciseWriter>(options, write);
}
