// Every platform call that a rule makes fails once, with each answer that it can give.
#include <algorithm>

#include "rule.h"
#include "socket.h"

namespace {

using AnswerOrThrow = std::optional<int>;

/// The answers that the operation of `call` can give; none of them stands for an exception.
std::vector<AnswerOrThrow> answers_of(const std::string& call) {
    const auto is = [&](const char* start) { return call.rfind(start, 0) == 0; };
    if (is_release(call)) {
        return {};
    }
    if (is("maapi_exists") || is("cdb_exists") || is("maapi_num")) {
        return {-1, 0, 1, std::nullopt};
    }
    if (is("qelconfd") || is("Qel") || is("confd_pp")) {
        return {-1, std::nullopt};
    }
    return is("confd_trans_seterr") ? std::vector{AnswerOrThrow()}
                                    : std::vector<AnswerOrThrow>{-1, 2, std::nullopt};
}

/// Delivers with call `k` answered so; the last error is "why".
Outcome fail(Delivery& delivery, std::size_t k, AnswerOrThrow answer) {
    using local_platform::Answer;
    return delivery.run([=, n = std::size_t(0)](const local_platform::Call& call) mutable {
        std::optional<Answer> told;
        if (n++ == k) {
            told = answer ? Answer{*answer} : throw std::runtime_error("injected");
        } else if (call.operation == "confd_lasterr") {
            told = {0, "why"};
        }
        return told;
    });
}

/// Whether nothing is called after `k` but what reports and what releases.
bool ends_at(std::size_t k, const Lines& calls) {
    return std::all_of(&calls[k] + 1, &calls.back() + 1, [](const std::string& call) {
        return is_release(call) || call == "confd_lasterr" || call == "confd_trans_seterr";
    });
}

/// Fails call `k` of `sample`, `call`, in every way; returns in how many.
std::size_t fail_in_every_way(Delivery& delivery, const Case& sample, std::size_t k,
                              const Calls::Call& call) {
    const std::vector<AnswerOrThrow> answers = answers_of(call.text);
    for (const AnswerOrThrow answer : answers) {
        SCOPED_TRACE(testing::PrintToString(sample) + ", where " + call.text + " answers " +
                     (answer ? std::to_string(*answer) : "with an exception"));
        const std::optional<Answer>& stated = answer == 1 ? call.said_1 : call.failed;
        const Answer expected =
            answer ? stated.value_or(sample.the<Answer>()) : Answer{"exception: injected"};
        const Outcome outcome = fail(delivery, k, answer);
        EXPECT_EQ(outcome.answer, expected.text);
        const bool ends = !answer || (call.ends && answer != 1);
        EXPECT_TRUE(!ends || ends_at(k, outcome.calls)) << testing::PrintToString(outcome.calls);
    }
    return answers.size();
}

TEST(FaultSweep, EveryCallFailsWithEveryAnswer) {
    std::size_t failed = 0;
    for (const Case& sample : samples()) {
        Delivery delivery(sample);
        const int open_before = local_platform::open_sockets();
        const Calls calls = sample.the<Calls>().whole();
        ASSERT_EQ(delivery.run().calls, calls.lines()) << testing::PrintToString(sample);
        for (std::size_t k = 0; k < calls.made.size(); ++k) {
            failed += fail_in_every_way(delivery, sample, k, calls.made[k]);
        }
        EXPECT_EQ(local_platform::open_sockets(), open_before);
    }
    std::printf("[          ] calls failed: %zu\n", failed);
}

}  // namespace
