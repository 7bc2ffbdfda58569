// What each rule answers, and the platform calls behind it.
#include <gmock/gmock.h>

#include <thread>

#include "rule.h"

using testing::HasSubstr;

namespace {

/// Delivers every case, and lets others go before at every call. The keys are the process's own: a
/// case without them is delivered `alone` only.
void deliver_all(bool alone) {
    for (const RuleCases& rule : rules()) {
        for (const Case& one : rule.cases) {
            if (!alone && !one.the<CryptoKeys>().installed) {
                continue;
            }
            SCOPED_TRACE(testing::PrintToString(one));
            const Outcome outcome = Delivery(one).run([](const local_platform::Call&) {
                std::this_thread::yield();
                return std::nullopt;
            });
            EXPECT_EQ(outcome.answer, one.the<Answer>().text);
            const Calls& calls = one.the<Calls>();
            EXPECT_EQ(outcome.calls, calls.any ? outcome.calls : calls.whole().lines());
        }
    }
}

TEST(Rules, AnswerAndCallThePlatformAsTheirCasesSayOnAnyNumberOfThreads) {
    deliver_all(true);
    std::thread threads[4];
    for (std::thread& thread : threads) {
        thread = std::thread(deliver_all, false);
    }
    for (std::thread& thread : threads) {
        thread.join();
    }
}

TEST(RulesDeathTest, StopTheProcessAtTheFirstKeyOfAWrongType) {
    for (const RuleCases& rule : rules()) {
        for (std::size_t i = 0; i < rule.keys.size(); ++i) {
            Delivery delivery(rule.cases[0]);
            for (std::size_t later = i; later < rule.keys.size(); ++later) {
                delivery.spoil(rule.keys[later].first);
            }
            const auto& [place, type] = rule.keys[i];
            const std::string key = "&kp->v[" + std::to_string(place) + "][0]";
            EXPECT_DEATH(delivery.run(),
                         AllOf(HasSubstr("src/lib/validate_vrrp_"),
                               HasSubstr(": int32_t " + rule.handler + "(int32_t, confd_trans_ctx"),
                               HasSubstr("Assertion `(" + (place == kNewValue ? "newval" : key) +
                                         ")->type == " + type + "' failed")));
        }
    }
}

}  // namespace
