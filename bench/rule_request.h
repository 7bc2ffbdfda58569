/// One validation request of each rule.
#pragma once

#include <string>
#include <vector>

#include "instance.h"

struct RuleRequest {
    std::string selector;
    confd_trans_ctx tctx;
    confd_hkeypath_t kp;
    confd_value_t newval;
};

/// A request for each rule on a node of `candidate`, a workload of two instances or
/// more, for which the rule makes all its calls. All of the arguments must outlive them.
std::vector<RuleRequest> rule_requests(const local_platform::DataTree& candidate,
                                       const local_platform::Instance& instance);

/// Hands `request` to the plug-in; throws unless it passes.
void make_request(RuleRequest& request);
