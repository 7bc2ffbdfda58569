/// Checks of many candidates with one plug-in and model.
#pragma once

#include <exception>
#include <functional>
#include <vector>

#include "checking/checker.h"
#include "fleet/pairing.h"

struct Fleet {
    const Checker& checker;
    const std::vector<Pair>& pairs;
    std::size_t jobs;      ///< threads, 1 or more
    std::size_t max_size;  ///< of each file, in bytes
};

/// Hands `take` a report of each pair, in their order, whatever is wrong with its files, and
/// returns how many it got: all, unless the run was interrupted. A running configuration that all
/// share is read once. With fewer pairs than jobs, several threads make the requests of one. Throws
/// InputError when the shared running configuration or the model cannot be read, and what `take`
/// throws.
std::size_t check_fleet(const Fleet& fleet, const std::function<void(Report)>& take);

/// The report of a pair that could not be checked.
Report not_checked_report(const Pair& pair, const std::exception& error);
