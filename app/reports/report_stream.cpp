#include "reports/report_stream.h"

#include "reports/json_parts.h"
#include "reports/sentences.h"

namespace {

/// Whether there is nothing to say of the candidate.
bool is_clean(const Report& report) {
    return report.failure.empty() && report.findings.empty() && report.omitted.empty() &&
           (!report.changes || report.changes->empty());
}

}  // namespace

ReportStream::ReportStream(ReportOptions options, Write write)
    : options_(std::move(options)), write_(std::move(write)) {}

void ReportStream::add(Report report) {
    const bool is_first = totals_.candidates == 0;
    totals_.add(report);
    if (options_.silent) {
        return;
    }
    if (is_kept()) {
        kept_.push_back(std::move(report));
    } else if (options_.format == "json") {
        write_((is_first ? json_begin() : ",\n") + json_item(report));
    } else if (!options_.counts_clean || !is_clean(report)) {
        write_(format_reports({std::move(report)}, options_));
    }
}

void ReportStream::finish(std::size_t unreached) {
    const bool is_empty = totals_.candidates == 0;
    totals_.add_unreached(unreached);
    options_.unreached = unreached;
    if (options_.silent) {
        return;
    }
    if (is_kept()) {
        write_(format_reports(kept_, options_));
    } else if (options_.format == "json") {
        write_((is_empty ? json_begin() : "") + json_end(totals_));
    } else if (!options_.quiet && (options_.counts_clean || totals_.candidates > 1)) {
        write_(total_text(totals_) + "\n");
    }
}
