#include "results.h"

#include <algorithm>
#include <cmath>

void Results::ReportRuns(const std::vector<Run>& runs) {
    for (const Run& run : runs) {
        if (run.run_type != Run::RT_Iteration || run.error_occurred) {
            continue;
        }
        const double time = run.real_accumulated_time * 1e9 / static_cast<double>(run.iterations);
        const auto [found, is_new] = shortest_.emplace(run.run_name.function_name, time);
        found->second = std::min(found->second, time);
    }
    ConsoleReporter::ReportRuns(runs);
}

double Results::nanoseconds(const std::string& name) const {
    const auto found = shortest_.find(name);
    return found == shortest_.end() ? std::nan("") : found->second;
}
