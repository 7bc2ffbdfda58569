// The rules' verdicts, and the platform calls behind them.
#include <algorithm>

#include "support.h"

namespace {

void check(const Request& request) {
    SCOPED_TRACE(request.selector + " at " + request.node + ": " + request.verdict);
    const Outcome outcome = Delivery(request).run();
    EXPECT_EQ(outcome.verdict, request.verdict);
    if (!request.calls.empty()) {
        EXPECT_EQ(outcome.list, request.calls);
    }
}

TEST(Rules, AnswerAndCallThePlatformLikeThis) {
    EXPECT_EQ(samples().size(), 24U);
    std::for_each(samples().begin(), samples().end(), check);
    const std::vector<Request> edges = requests("edges.txt");
    std::for_each(edges.begin(), edges.end(), check);
}

}  // namespace
