// What each rule answers, and the platform calls behind it.
#include <algorithm>
#include <regex>

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

class EachCase : public testing::TestWithParam<Case> {};

TEST_P(EachCase, AnswersAndCallsThePlatformSo) {
    const Outcome outcome = Delivery(GetParam()).run();
    EXPECT_EQ(outcome.answer, GetParam().the<Answer>().text);
    const Calls& calls = GetParam().the<Calls>();
    const Lines expected = calls.whole().lines();
    EXPECT_TRUE(calls.any || outcome.calls == expected) << side_by_side(expected, outcome.calls);
}

INSTANTIATE_TEST_SUITE_P(Rules, EachCase, testing::ValuesIn(all_cases()), test_name);

/// `text` about other interfaces, whose names hold what would be conversions in a format.
std::string renamed(const std::string& text) {
    return std::regex_replace(text, std::regex("vlan([12])"), "%s%n$1");
}

template <typename Settings>
void rename(Settings& settings) {
    for (Setting& setting : settings) {
        setting.path = renamed(setting.path);
    }
}

TEST(Rules, TakeConversionsInANameAsTheyStand) {
    for (const Case& sample : samples()) {
        Case other = sample;
        rename(std::get<Candidate>(other.said));
        rename(std::get<Running>(other.said));
        std::get<Request>(other.said).node = renamed(sample.the<Request>().node);
        const Outcome outcome = Delivery(other).run();
        EXPECT_EQ(outcome.answer, renamed(sample.the<Answer>().text));
        Lines expected = sample.the<Calls>().whole().lines();
        std::transform(expected.begin(), expected.end(), expected.begin(), renamed);
        EXPECT_TRUE(outcome.calls == expected) << side_by_side(expected, outcome.calls);
    }
}

/// `text` as a regular expression. Clang puts a blank before the '*' of a prototype.
std::string pattern_of(const std::string& text) {
    std::string pattern;
    for (const char c : text) {
        const std::string one(1, c);
        pattern += c == '*' ? " ?[*]" : std::isalnum(c) != 0 ? one : "[" + one + "]";
    }
    return pattern;
}

/// The report of the assertion on the key at `place`.
std::string report(const std::string& handler, int place, const std::string& type) {
    const std::string value =
        place == kNewValue ? "(newval)" : "(&kp->v[" + std::to_string(place) + "][0])";
    return ": src/lib/validate_vrrp_[a-z0-9_]+.cpp:[0-9]+: " +
           pattern_of("int32_t " + handler +
                      "(int32_t, confd_trans_ctx*, confd_hkeypath_t*, confd_value_t*): " +
                      "Assertion `" + value + "->type == " + type + "' failed");
}

TEST(RulesDeathTest, StopTheProcessAtTheFirstKeyOfAWrongType) {
    for (const Rule& rule : rules()) {
        for (std::size_t i = 0; i < rule.keys.size(); ++i) {
            Delivery delivery(rule.cases[0]);
            for (std::size_t later = i; later < rule.keys.size(); ++later) {
                delivery.spoil(rule.keys[later].first);
            }
            const auto& [place, type] = rule.keys[i];
            EXPECT_DEATH(delivery.run(), report(rule.handler, place, type));
        }
    }
}

}  // namespace
