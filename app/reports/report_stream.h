/// Reports that are written as they come.
#pragma once

#include <functional>
#include <string>
#include <vector>

#include "reports/report_format.h"
#include "reports/totals.h"

/// Writes reports one after the other as one document. Text and JSON are written at once; what
/// needs all reports before it can begin, such as JUnit's counts, is kept until the end.
class ReportStream {
  public:
    using Write = std::function<void(const std::string&)>;

    ReportStream(ReportOptions options, Write write);

    void add(Report report);
    /// Ends the document; `unreached` more candidates have no report, since the run was ended.
    void finish(std::size_t unreached);

    const Totals& totals() const { return totals_; }

  private:
    bool is_kept() const { return options_.format != "text" && options_.format != "json"; }

    ReportOptions options_;
    Write write_;
    Totals totals_;
    std::vector<Report> kept_;
};
