/// The figures as docs/performance.md shows them.
#pragma once

#include <iosfwd>
#include <string>
#include <vector>

#include "heap_use.h"
#include "results.h"

/// What is counted of one rule's request, beside its time.
struct RuleCounts {
    std::string selector;
    std::size_t calls;
    std::size_t socket_calls;
    std::size_t paths;
    std::size_t allocations;       ///< the plug-in's own
    std::size_t bare_allocations;  ///< the platform's
};

/// What is counted of one whole check, beside its time.
struct CheckCounts {
    int instances;
    std::size_t requests;
    std::size_t calls;  ///< of the platform, by all rules
    HeapUse check;
    HeapUse unique;
    HeapUse every;
};

void print_rules(std::ostream& out, const Results& results, const std::vector<RuleCounts>& rules);
void print_checks(std::ostream& out, const Results& results,
                  const std::vector<CheckCounts>& checks);
void print_forms(std::ostream& out, const Results& results, const std::vector<std::string>& forms);
void print_growth(std::ostream& out, const Results& results,
                  const std::vector<CheckCounts>& checks);

/// The times against the number of instances, in milliseconds, for gnuplot.
void print_plot_data(std::ostream& out, const Results& results,
                     const std::vector<CheckCounts>& checks);
