/// What all reports of a run come to.
#pragma once

#include <cstddef>
#include <string>
#include <vector>

#include "checking/report.h"

struct Summary {
    std::size_t candidates = 0;
    std::size_t errors = 0;
    std::size_t warnings = 0;
    std::size_t requests = 0;
    std::size_t not_checked = 0;     ///< candidates that could not be checked, or were not reached
    std::size_t unknown_nodes = 0;   ///< that were not checked
    std::vector<std::string> notes;  ///< what a reader of the counts must know as well

    void add(const Report& report) {
        ++candidates;
        errors += report.count(Severity::error);
        warnings += report.count(Severity::warning);
        requests += report.requests;
        not_checked += report.failure.empty() ? 0 : 1;
        unknown_nodes += report.unknown_data.nodes;
    }

    /// Counts candidates of which there is no report.
    void add_unreached(std::size_t count) {
        candidates += count;
        not_checked += count;
    }
};
