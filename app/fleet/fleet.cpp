#include "fleet/fleet.h"

#include <malloc.h>

#include <algorithm>
#include <new>
#include <optional>

#include "checking/ordered_work.h"
#include "errors/input_error.h"
#include "files/interrupt.h"
#include "files/named_file.h"

namespace {

/// Makes the allocator keep what one report has freed for the next: given back each time, it is
/// fetched again page by page, and the threads wait for each other there.
void keep_freed_memory() {
    mallopt(M_TRIM_THRESHOLD, 256 << 20);
    mallopt(M_MMAP_THRESHOLD, 32 << 20);  // no longer raised as needed once any of these is set
    mallopt(M_TOP_PAD, 4 << 20);
}

Configuration read_running(const Fleet& fleet, const std::string& name) {
    return fleet.checker.read_running(name.empty() ? nullptr
                                                   : read_configuration_file(name, fleet.max_size));
}

/// The running configuration of all pairs when they have the same.
std::optional<Configuration> shared_running(const Fleet& fleet) {
    const auto differs = [&](const Pair& pair) {
        return !pair.problem.empty() || pair.running != fleet.pairs.front().running;
    };
    if (fleet.pairs.empty() || std::any_of(fleet.pairs.begin(), fleet.pairs.end(), differs)) {
        return std::nullopt;
    }
    return read_running(fleet, fleet.pairs.front().running);
}

std::optional<Report> check_pair(const Fleet& fleet, const Pair& pair,
                                 const std::optional<Configuration>& shared) {
    try {
        if (!pair.problem.empty()) {
            throw InputError(pair.problem);
        }
        std::optional<Configuration> own;
        const Configuration& running =
            shared ? *shared : own.emplace(read_running(fleet, pair.running));
        const std::size_t threads = std::max<std::size_t>(1, fleet.jobs / fleet.pairs.size());
        return fleet.checker.check(
            read_configuration_file(pair.candidate, fleet.max_size, pair.shown), running, threads,
            fleet.pairs.size() == 1);
    } catch (const std::exception& error) {
        if (is_interrupted()) {
            return std::nullopt;  // which ends the wait for a file as well
        }
        Report report = not_checked_report(pair, error);
        report.rule_names = fleet.checker.rule_names();
        return report;
    }
}

}  // namespace

std::size_t check_fleet(const Fleet& fleet, const std::function<void(Report)>& take) {
    fleet.checker.prepare_for(std::min(fleet.jobs, fleet.pairs.size()));
    const std::optional<Configuration> shared = shared_running(fleet);
    if (fleet.pairs.size() > 1) {
        keep_freed_memory();
    }
    OrderedWork<Report> work;
    work.count = fleet.pairs.size();
    work.threads = fleet.jobs;
    work.stop = &is_interrupted();
    work.make_worker = [&] {
        return [&](std::size_t number) { return check_pair(fleet, fleet.pairs[number], shared); };
    };
    work.take = take;
    return work_in_order(work);
}

Report not_checked_report(const Pair& pair, const std::exception& error) {
    Report report;
    report.candidate = pair.shown;
    report.running = shown_name(pair.running);
    const bool is_memory = dynamic_cast<const std::bad_alloc*>(&error) != nullptr;
    report.failure =
        is_memory ? report.candidate + ": there is not enough memory to check it" : error.what();
    const auto* const with_place = dynamic_cast<const InputError*>(&error);
    report.failure_at = with_place == nullptr ? Location() : with_place->at;
    return report;
}
