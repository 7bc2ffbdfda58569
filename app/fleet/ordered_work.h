/// Reports made by several threads and taken in order.
#pragma once

#include <atomic>
#include <cstddef>
#include <functional>
#include <optional>

#include "checking/report.h"

struct OrderedWork {
    std::size_t count;    ///< of the reports to make
    std::size_t threads;  ///< that make them, 1 or more
    /// Makes the report of this number, on any thread; nothing when it was stopped.
    std::function<std::optional<Report>(std::size_t)> make;
    /// Gets every report, in order, never two at a time.
    std::function<void(Report)> take;
    const std::atomic<bool>& stop;  ///< once true, no report is begun
};

/// Makes and takes the reports, and returns how many were taken. Never holds more than a few for
/// each thread, however long the first one takes. Throws what `make` or `take` throws.
std::size_t work_in_order(const OrderedWork& work);
