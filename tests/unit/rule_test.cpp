// The rules' verdicts, and the platform calls behind them.
#include <gmock/gmock.h>

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
    // Every rule of the model has its two samples, the one that it accepts first.
    Lines sampled;
    for (std::size_t i = 0; i < samples().size(); i += 2) {
        sampled.push_back(samples()[i].selector);
        EXPECT_EQ(samples()[i + 1].selector, sampled.back());
        EXPECT_EQ(samples()[i].verdict, "ok");
        EXPECT_NE(samples()[i + 1].verdict, "ok");
    }
    EXPECT_THAT(sampled, testing::UnorderedElementsAreArray(test_model().selectors()));
    std::for_each(samples().begin(), samples().end(), check);
    const std::vector<Request> edges = requests("edges.txt");
    std::for_each(edges.begin(), edges.end(), check);
}

}  // namespace
