/// Delivers every use of the validation point in a candidate to the plug-in.
#pragma once

#include <functional>

#include "local_host.h"
#include "report.h"
#include "yang_model.h"

struct Transaction {
    local_platform::DataTree candidate;
    local_platform::DataTree running;
    std::optional<local_platform::CryptoKey> key;
};

/// Walks the candidate in document order and collects every finding. Throws CannotJudge when the
/// model uses a validation point that the plug-in does not serve.
void judge(const YangModel& model, const local_platform::Host& host, const Transaction& transaction,
           Report& report);
