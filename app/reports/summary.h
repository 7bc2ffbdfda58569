/// What all reports of a run come to.
#pragma once

#include <cstddef>
#include <map>
#include <string>
#include <vector>

#include "checking/report.h"

/// What becomes of a candidate; what to look at first comes first.
enum class Outcome { refused, not_checked, warned, clean };

inline Outcome outcome_of(const Report& report) {
    return !report.failure.empty()               ? Outcome::not_checked
           : report.count(Severity::error) > 0   ? Outcome::refused
           : report.count(Severity::warning) > 0 ? Outcome::warned
                                                 : Outcome::clean;
}

struct Summary {
    std::size_t candidates = 0;
    std::size_t refused = 0;
    std::size_t warned = 0;
    std::size_t clean = 0;
    std::size_t not_checked = 0;  ///< candidates that could not be checked, or were not reached
    std::size_t errors = 0;
    std::size_t warnings = 0;
    std::size_t requests = 0;
    std::size_t unknown_nodes = 0;                        ///< that were not checked
    std::map<std::string, std::size_t> findings_by_rule;  ///< of rules that have any
    std::vector<std::string> notes;  ///< what a reader of the counts must know as well

    void add(const Report& report) {
        std::size_t* const outcomes[] = {&refused, &not_checked, &warned, &clean};
        ++*outcomes[static_cast<std::size_t>(outcome_of(report))];
        ++candidates;
        errors += report.count(Severity::error);
        warnings += report.count(Severity::warning);
        requests += report.requests;
        unknown_nodes += report.unknown_data.nodes;
        for (const Finding& finding : report.findings) {
            ++findings_by_rule[finding.rule];
        }
        for (const Omitted& rest : report.omitted) {
            findings_by_rule[rest.rule] += rest.errors + rest.warnings;
        }
    }

    /// Counts candidates of which there is no report.
    void add_unreached(std::size_t count) {
        candidates += count;
        not_checked += count;
    }
};
