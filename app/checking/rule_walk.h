/// Makes the request of every rule in a candidate.
#pragma once

#include <atomic>
#include <exception>
#include <functional>
#include <set>

#include "checking/report.h"
#include "configuration/yang_model.h"
#include "host.h"

/// What rules read.
struct Transaction {
    const Configuration& candidate;
    const Configuration& running;
    std::optional<local_platform::CryptoKey> key;
};

/// What to check with.
struct RuleWalk {
    const YangModel& model;
    const local_platform::Host& host;
    std::set<std::string> rule_names = {};                ///< the rules to run; empty for all
    std::function<void(const Report&)> on_progress = {};  ///< called now and then; may be empty
    std::size_t max_findings = 100;                       ///< that the report holds of each rule
    std::size_t threads = 1;                  ///< at most; each has an instance of its own
    const std::atomic<bool>* stop = nullptr;  ///< once true, the walk ends; may be null
};

/// A walk that was told to stop.
struct Interrupted : std::exception {
    const char* what() const noexcept override { return "interrupted"; }
};

/// Makes every request of the candidate, in document order, and adds each to `report` with its
/// finding; the report is the same for any number of threads. Throws InputError when the model uses
/// a validation point that the plug-in does not serve, Interrupted when it was stopped, and passes
/// what leaves the plug-in.
void walk_candidate(const RuleWalk& walk, const Transaction& transaction, Report& report);
