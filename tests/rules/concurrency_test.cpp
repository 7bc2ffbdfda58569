#include <thread>

#include "rule.h"

namespace {

TEST(Concurrency, ThreadsThatGiveWayAtEveryCallDoNotDisturbEachOther) {
    const std::vector<Case> all = samples();
    Lines wrong[4];
    std::vector<std::thread> threads;
    for (Lines& mine : wrong) {
        threads.emplace_back([&all, &mine] {
            for (std::size_t i = 0; i < 20 * all.size(); ++i) {
                const Case& sample = all[i % all.size()];
                const Outcome outcome = Delivery(sample).run([](const local_platform::Call&) {
                    std::this_thread::yield();
                    return std::nullopt;
                });
                if (outcome.answer != sample.the<Answer>().text ||
                    outcome.calls != sample.the<Calls>().whole().lines()) {
                    mine.push_back(testing::PrintToString(sample) + ": " + outcome.answer);
                }
            }
        });
    }
    for (std::size_t i = 0; i < threads.size(); ++i) {
        threads[i].join();
        EXPECT_EQ(wrong[i], Lines());
    }
}

}  // namespace
