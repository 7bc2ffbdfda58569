#include "fleet/fleet.h"

#include <algorithm>
#include <cstdlib>
#include <cstring>
#include <optional>

#include "errors/cannot_check.h"
#include "fleet/ordered_work.h"

namespace {

/// Where `reason` says that it is, when it begins as "FILE:LINE:COLUMN: " does, for the file
/// `file`.
Location place_of(const std::string& reason, const std::string& file) {
    Location location{file, 0, 0};
    if (reason.compare(0, file.size() + 1, file + ":") != 0) {
        return {};
    }
    const char* rest = reason.c_str() + file.size() + 1;
    for (std::size_t* const number : {&location.line, &location.column}) {
        const std::size_t digits = std::strspn(rest, "0123456789");
        if (digits == 0 || rest[digits] != ':') {
            break;
        }
        *number = std::strtoul(rest, nullptr, 10);
        rest += digits + 1;
    }
    return location;
}

std::string shown_name(const std::string& file) {
    return file == "-" ? "standard input" : file;
}

Running read_running(const Fleet& fleet, const std::string& name) {
    return fleet.checker.read_running(
        name.empty() ? std::nullopt : std::optional(read_configuration_file(name, fleet.max_size)));
}

/// The running configuration of all pairs when they have the same.
std::optional<Running> shared_running(const Fleet& fleet) {
    const auto differs = [&](const Pair& pair) {
        return !pair.problem.empty() || pair.running != fleet.pairs.front().running;
    };
    if (fleet.pairs.empty() || std::any_of(fleet.pairs.begin(), fleet.pairs.end(), differs)) {
        return std::nullopt;
    }
    return read_running(fleet, fleet.pairs.front().running);
}

std::optional<Report> check_pair(const Fleet& fleet, const Pair& pair,
                                 const std::optional<Running>& shared) {
    try {
        if (!pair.problem.empty()) {
            throw CannotCheck(pair.problem);
        }
        CheckEffort effort;
        effort.threads = std::max<std::size_t>(1, fleet.jobs / fleet.pairs.size());
        effort.shows_progress = fleet.pairs.size() == 1;
        effort.stop = &fleet.stop;
        const Running running = shared ? *shared : read_running(fleet, pair.running);
        return fleet.checker.check(read_configuration_file(pair.candidate, fleet.max_size), running,
                                   effort);
    } catch (const Interrupted&) {
        return std::nullopt;
    } catch (const std::exception& error) {
        Report report = unchecked_report(pair, error.what());
        report.selectors = fleet.checker.selectors();
        return report;
    }
}

}  // namespace

std::size_t check_fleet(const Fleet& fleet, const std::function<void(Report)>& take) {
    const std::optional<Running> shared = shared_running(fleet);
    return work_in_order(
        {fleet.pairs.size(), fleet.jobs,
         [&](std::size_t number) { return check_pair(fleet, fleet.pairs[number], shared); }, take,
         fleet.stop});
}

Report unchecked_report(const Pair& pair, const std::string& reason) {
    Report report;
    report.candidate = shown_name(pair.candidate);
    report.running = shown_name(pair.running);
    report.failure = reason;
    report.failure_at = place_of(reason, report.candidate);
    if (!report.failure_at.is_known()) {
        report.failure_at = place_of(reason, report.running);
    }
    return report;
}
