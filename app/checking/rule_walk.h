/// Delivers every use of the validation point in a candidate to the plug-in.
#pragma once

#include <functional>
#include <set>

#include "checking/report.h"
#include "configuration/yang_model.h"
#include "host.h"

struct Transaction {
    local_platform::DataTree candidate;
    local_platform::DataTree running;
    std::optional<local_platform::CryptoKey> key;
};

/// What to check with.
struct RuleWalk {
    const YangModel& model;
    const local_platform::Host& host;
    std::set<std::string> selectors;                ///< the rules to run; empty for all
    std::function<void(const Report&)> on_request;  ///< called after every request; may be empty
};

/// Walks the candidate in document order and adds every request and finding to `report`. Throws
/// CannotCheck when the model uses a validation point that the plug-in does not serve, and passes
/// what leaves the plug-in.
void walk_candidate(const RuleWalk& walk, const Transaction& transaction, Report& report);
