/// What a host asks a plug-in about a candidate, whatever its trees are made of.
#pragma once

#include <set>
#include <string>
#include <vector>

#include "data_tree.h"
#include "host.h"
#include "model/yang_schema.h"

struct Request {
    const Rule* rule;
    const local_platform::Node* node;
};

/// The requests of `candidate` by `rules`, in document order; `rule_names` are the rules to run,
/// empty for all. Throws InputError when one uses a validation point that `host` does not serve.
std::vector<Request> requests_of(const RulesByNode& rules, const local_platform::Host& host,
                                 const local_platform::DataTree& candidate,
                                 const local_platform::DataTree& running,
                                 const std::set<std::string>& rule_names = {});

/// The plug-in's answer. A rule takes a node that it fails to read for one that is not configured:
/// throws InputError when that is because the model lacks it. Throws PlatformError.
local_platform::Response ask(const local_platform::Host& host,
                             const local_platform::Instance& instance, const Request& request);

/// The message that the operator reads of the answer to a request that is not accepted.
std::string message_of(const local_platform::Response& response, const local_platform::Node& node);
