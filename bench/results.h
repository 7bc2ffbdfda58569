/// The benchmarks' figures, by name.
#pragma once

#include <benchmark/benchmark.h>

#include <map>
#include <string>

/// Prints as the library does and keeps the shortest of each benchmark's repetitions: whatever else
/// the machine does only ever adds to a time.
class Results : public benchmark::ConsoleReporter {
  public:
    Results() : ConsoleReporter(OO_Tabular) {}
    void ReportRuns(const std::vector<Run>& runs) override;

    /// Nanoseconds for one iteration; not a number for a benchmark that did not run.
    double nanoseconds(const std::string& name) const;

  private:
    std::map<std::string, double> shortest_;
};
