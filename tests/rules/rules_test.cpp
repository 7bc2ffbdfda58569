// What each rule answers, and the platform calls behind it.
#include <algorithm>

#include "rule.h"

namespace {

std::vector<Case> all_cases() {
    std::vector<Case> all;
    for (const Rule& rule : rules()) {
        all.insert(all.end(), rule.cases.begin(), rule.cases.end());
    }
    return all;
}

/// The case's name as GoogleTest takes it.
std::string test_name(const testing::TestParamInfo<Case>& info) {
    std::string name = info.param.selector + "_" + info.param.name;
    std::replace_if(
        name.begin(), name.end(), [](char c) { return std::isalnum(c) == 0; }, '_');
    return name;
}

class Rules : public testing::TestWithParam<Case> {};

TEST_P(Rules, AnswerAndCallThePlatformLikeThis) {
    const Outcome outcome = Delivery(GetParam()).run();
    EXPECT_EQ(outcome.answer, GetParam().the<Answer>().text);
    const Calls& calls = GetParam().the<Calls>();
    const Lines expected = calls.whole().lines();
    EXPECT_TRUE(calls.any || outcome.calls == expected) << side_by_side(expected, outcome.calls);
}

INSTANTIATE_TEST_SUITE_P(All, Rules, testing::ValuesIn(all_cases()), test_name);

/// `text` as a regular expression. Clang puts a blank before the '*' of a prototype.
std::string pattern_of(const std::string& text) {
    std::string pattern;
    for (const char c : text) {
        const std::string one(1, c);
        pattern += c == '*' ? " ?[*]" : std::isalnum(c) != 0 ? one : "[" + one + "]";
    }
    return pattern;
}

TEST(RulesDeathTest, StopTheProcessAtTheFirstKeyOfAWrongType) {
    for (const Rule& rule : rules()) {
        for (std::size_t i = 0; i < rule.keys.size(); ++i) {
            Delivery delivery(rule.cases[0]);
            for (std::size_t later = i; later < rule.keys.size(); ++later) {
                delivery.spoil(rule.keys[later].first);
            }
            const auto& [place, type] = rule.keys[i];
            const std::string value =
                place == kNewValue ? "(newval)" : "(&kp->v[" + std::to_string(place) + "][0])";
            EXPECT_DEATH(delivery.run(),
                         ": src/lib/validate_vrrp_[a-z0-9_]+.cpp:[0-9]+: " +
                             pattern_of("int32_t " + rule.handler +
                                        "(int32_t, confd_trans_ctx*, confd_hkeypath_t*, "
                                        "confd_value_t*): Assertion `" +
                                        value + "->type == " + type + "' failed"));
        }
    }
}

}  // namespace
