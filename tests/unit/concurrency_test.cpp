#include <thread>

#include "support.h"

namespace {

TEST(Concurrency, ThreadsWithInstancesOfTheirOwnDoNotDisturbEachOther) {
    const std::vector<Request>& all = samples();
    Lines wrong[4];
    std::thread threads[4];
    for (int thread = 0; thread < 4; ++thread) {
        threads[thread] = std::thread([&all, &mine = wrong[thread]] {
            for (std::size_t i = 0; i < 20 * all.size(); ++i) {
                const Request& sample = all[i % all.size()];
                const Outcome outcome = Delivery(sample).run();
                if (outcome.verdict != sample.verdict || outcome.list != sample.calls) {
                    mine.push_back(sample.selector + ": " + outcome.verdict);
                }
            }
        });
    }
    for (int thread = 0; thread < 4; ++thread) {
        threads[thread].join();
        EXPECT_EQ(wrong[thread], Lines());
    }
}

}  // namespace
