// Which requests a configuration makes, and what becomes of the answers.
#include "checking/rule_walk.h"

#include <gmock/gmock.h>

#include "checking/rule_message.h"
#include "errors/input_error.h"
#include "folder.h"

using namespace testing;

namespace {

/// Model and plug-in of the tests' own.
struct Bench {
    YangModel model{TEST_YANG_DIR};
    local_platform::Host host{TEST_PLUGIN};

    Configuration read(const std::string& json) const {
        return model.read(std::make_shared<SourceText>("text", json));
    }

    Report walk(const std::string& candidate, const std::string& running,
                const std::set<std::string>& rule_names = {}) const {
        Report report;
        std::size_t shown = 0;
        const RuleWalk walk{model, host, rule_names,
                            [&](const Report& so_far) { shown = so_far.requests; }};
        walk_candidate(walk, {read(candidate), read(running), {}}, report);
        EXPECT_EQ(shown, report.requests);
        return report;
    }
};

/// "rule place" of each finding, in order.
std::vector<std::string> findings_of(const Report& report) {
    std::vector<std::string> findings;
    for (const Finding& finding : report.findings) {
        findings.push_back(finding.rule + " " + finding.cli_path);
    }
    return findings;
}

const std::string kFull = R"({"places:top": {"flag": [null], "section": {"pair": [
    {"first": "b", "second": 2, "size": 10}, {"first": "a b", "second": 1, "size": 9}]}}})";

TEST(RuleWalk, AsksForEveryUseInDocumentOrderAndKeepsWhatIsSaidAndRead) {
    const Report report = Bench().walk(kFull, "{}");
    EXPECT_EQ(report.requests, 7U);
    ASSERT_THAT(
        findings_of(report),
        ElementsAre("warning top flag", "silent top section", "reading top section pair b 2 size",
                    "odd top section pair b 2 size", "odd top section pair a b 1 size"));
    const std::vector<Finding>& found = report.findings;
    EXPECT_EQ(found[0].message, "a value of type " + std::to_string(C_XMLTAG)) << "the last";
    EXPECT_THAT(found[1].message, HasSubstr("/top/section ")) << "one made, that names the node";
    EXPECT_TRUE(found[1].values.empty());
    EXPECT_EQ(found[2].message, "10 is too much");
    ASSERT_EQ(found[2].values.size(), 1U) << "what was read twice";
    EXPECT_EQ(found[2].values[0].cli_path + " " + found[2].values[0].value,
              "top section pair b 2 size 10");
    EXPECT_EQ(found[2].help, "Take less.");
    EXPECT_THAT(found[3].message, HasSubstr("/top/section/pair{b 2}/size"));
    EXPECT_EQ(found[4].path, "/top/section/pair[\"a b\" \"1\"]/size");
}

TEST(RuleWalk, LeavesAnUnchangedNodeAlone) {
    const Bench bench;
    EXPECT_EQ(bench.walk(kFull, kFull, {"silent"}).requests, 0U);
    const std::string other_size = replaced(kFull, "9", "8");
    for (const std::string& running : {std::string("{}"), other_size}) {
        EXPECT_EQ(bench.walk(kFull, running, {"silent"}).requests, 1U) << running;
    }
    EXPECT_EQ(bench.walk(R"({"places:top": {"section": {}}})", "{}", {"silent"}).requests, 0U);
}

TEST(RuleWalk, GivesTheSameReportForAnyNumberOfThreads) {
    const Bench bench;
    std::string pairs;
    for (int i = 0; i < 200; ++i) {
        pairs += std::string(i == 0 ? "" : ",") + R"({"first": ")" + std::to_string(i) +
                 R"(", "second": 1, "size": )" + std::to_string(i % 20) + "}";
    }
    const Configuration pair =
        bench.read(R"({"places:top": {"section": {"pair": [)" + pairs + "]}}}");
    for (const std::size_t threads : {1, 2, 5}) {
        Report report;
        walk_candidate({bench.model, bench.host, {}, {}, 15, threads}, {pair, bench.read("{}"), {}},
                       report);
        EXPECT_EQ(report.requests, 402U);
        const std::vector<std::string> findings = findings_of(report);
        ASSERT_EQ(findings.size(), 31U);
        EXPECT_EQ(findings[1], "odd top section pair 0 1 size");
        EXPECT_EQ(findings[30], "reading top section pair 34 1 size");
        ASSERT_EQ(report.omitted.size(), 2U);
        EXPECT_EQ(report.omitted[0].errors + report.omitted[1].errors, 185U + 85U);
    }
}

TEST(RuleWalk, EndsWhenToldToOrWhenAPluginThrows) {
    const Bench bench;
    const Configuration fault = bench.read(R"({"places:top": {"fault": "x"}})");
    const std::atomic<bool> stop{true};
    for (const std::size_t threads : {1, 2}) {
        Report report;
        EXPECT_THROW(walk_candidate({bench.model, bench.host, {}, {}, 9, threads},
                                    {fault, fault, {}}, report),
                     std::runtime_error);
        EXPECT_THROW(walk_candidate({bench.model, bench.host, {}, {}, 9, threads, &stop},
                                    {fault, fault, {}}, report),
                     Interrupted);
        EXPECT_EQ(report.requests, 0U);
    }
}

TEST(RuleMessage, HasTheHelpOfTheMessageThatItFits) {
    Rule use;
    use.messages = {{false, "no <name> there", "add"},
                    {false, "bad <name>.<reason>", "mend"},
                    {true, "take care", "wait"}};
    const std::pair<const char*, const char*> rows[] = {
        {"no a b there", "add"}, {"no there there", "add"}, {"no a b there?", ""},
        {"bad x.y.", "mend"},    {"bad x.", "mend"},        {"bad x", ""},
        {"take care!", ""}};
    for (const auto& [message, help] : rows) {
        EXPECT_EQ(help_for(use, message), help) << message;
    }
}

}  // namespace
