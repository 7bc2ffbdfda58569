/// Reports that are written as they come.
#pragma once

#include "reports/report_writer.h"

/// Writes reports one after the other in the wanted format, and counts them. Holds none of them,
/// however many there are.
class ReportStream {
  public:
    ReportStream(const ReportOptions& options, const Write& write);

    /// Throws InputError when a part of the document cannot be kept.
    void add(const Report& report);
    /// Ends the document; `not_reached` more candidates have no report, since the run was ended.
    void finish(std::size_t not_reached, std::vector<std::string> notes = {});

    const Summary& summary() const { return summary_; }

  private:
    std::unique_ptr<ReportWriter> writer_;  ///< null when nothing is to be written
    Summary summary_;
};
