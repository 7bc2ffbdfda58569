/// What a refusing rule compared.
#pragma once

#include <string>
#include <vector>

#include "call_hook.h"
#include "checking/report.h"
#include "configuration/configuration.h"

/// A platform call that may have read a value, which is looked up only when the rule refuses.
struct Read {
    bool is_running;  ///< of the running datastore
    bool is_count;    ///< of a list's entries
    std::string path;
};

/// The calls of one request, in their order.
using ReadLog = std::vector<Read>;

/// Adds `call` to `log` when it may read a value.
void note(const local_platform::Call& call, ReadLog& log);

/// Adds to `finding` on `node` of `candidate` the values behind it, each once: those of the leaves
/// and counted entries that the rule read, the node's own, and the keys of the instance that it
/// conflicts with. Where the candidate's file has what a rule on more than a value read last, the
/// finding's place is there. A path that cannot be read for its names becomes the finding's note.
void add_values(const Configuration& candidate, const Configuration& running,
                const local_platform::Node& node, const ReadLog& log, Finding& finding);
