// Every platform call that a rule makes fails once, with each answer that it can give.
#include <algorithm>
#include <map>
#include <set>

#include "socket.h"
#include "support.h"

using namespace local_platform;

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

/// `calls` with the list's path after each step of a cursor, and numbered where they repeat.
Lines labels(const Lines& calls) {
    std::map<std::string, int> seen;
    std::string list;
    Lines named;
    for (std::string call : calls) {
        list = call.rfind("maapi_init_cursor", 0) == 0 ? call.substr(call.find(' ')) : list;
        call += call == "maapi_get_next" || call == "confd_pp_value" ? list : "";
        named.push_back(call + (is_release(call) ? "" : "#" + std::to_string(++seen[call])));
    }
    return named;
}

bool begins_with_one(const std::string& call, const std::string& starts) {
    const Lines each = split(starts, ", ");
    return std::any_of(each.begin(), each.end(),
                       [&](const std::string& start) { return call.rfind(start, 0) == 0; });
}

/// Delivers with call `k` answered so; the last error is "why".
Outcome fail(Delivery& delivery, std::size_t k, AnswerOrThrow answer) {
    return delivery.run([=, n = std::size_t(0)](const Call& call) mutable {
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

TEST(FaultSweep, EveryCallFailsWithEveryAnswer) {
    const std::vector<Lines> effects = table(test_data("effects.txt"));
    std::set<const Lines*> shown;
    int failed = 0;
    for (std::size_t i = 0; i < samples().size(); ++i) {
        const Request& sample = samples()[i];
        Delivery delivery(sample);
        const Lines calls = labels(delivery.run().calls);
        const int open_before = open_sockets();
        for (std::size_t k = 0; k < calls.size(); ++k) {
            for (const AnswerOrThrow answer : answers_of(calls[k])) {
                SCOPED_TRACE(sample.selector + ", usually " + sample.verdict + ", at " + calls[k]);
                std::string verdict = answer ? sample.verdict : "thrown: injected";
                bool ends = !answer;
                for (const Lines& row : effects) {
                    if (answer && (row[0] == "any" || row[0] == sample.selector) &&
                        row[1] == (answer == 1 ? "1" : "!") && begins_with_one(calls[k], row[2])) {
                        verdict = row[3] == "refused" ? samples()[i | 1].verdict : row[3];
                        ends = row.size() == 4;
                        shown.insert(&row);
                    }
                }
                const Outcome outcome = fail(delivery, k, answer);
                EXPECT_EQ(outcome.verdict, verdict) << answer.value_or(0) << ": " << outcome.list;
                EXPECT_TRUE(!ends || ends_at(k, outcome.calls)) << outcome.list;
                ++failed;
            }
        }
        EXPECT_EQ(open_sockets(), open_before);
    }
    EXPECT_EQ(shown.size(), effects.size()) << "every effect shows";
    RecordProperty("calls_failed", failed);
    std::printf("[          ] calls failed: %d\n", failed);
}

}  // namespace
