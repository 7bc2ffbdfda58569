// Reports as pipelines and review tools read them.
#include <gmock/gmock.h>

#include <nlohmann/json.hpp>

#include "reports/report_format.h"
#include "samples.h"

using nlohmann::json;
using namespace testing;

namespace {

/// A report whose file has a name of letters that each tool has a meaning for.
Report oddly_named() {
    Report report = checked("./a, b:c%.json", {changed_address(), bare_warning()});
    report.findings[0].location.file = report.candidate;
    report.findings[0].message = "100%: a, b";
    report.findings[0].values.resize(1);
    report.sources = {
        std::make_shared<SourceText>(report.candidate, "1\n2\n3\n4\n5\n    \"ä\": 1")};
    auto rules = std::make_shared<std::vector<Rule>>(2);
    rules->at(0).name = "vrrp_version_validation";
    rules->at(0).demand = "Is confirmed. Always.";
    rules->at(0).messages = {{true, "changes", "Confirm."}};
    rules->at(1).name = "vrrp_ipv4_addr_update_validation";
    rules->at(1).demand = "Keeps its address.";
    rules->at(1).messages = {{false, "changed <name>", "Keep the address."}};
    report.rules = rules;
    return report;
}

TEST(GitHub, AnnotatesEachPlace) {
    Report report = not_checked("broken");
    report.failure_at.column = 0;
    EXPECT_THAT(format_reports({report}, {"github"}), HasSubstr("file=broken,line=3,title="));
    EXPECT_EQ(format_reports({checked("clean", {})}, {"github", false, 0, false, false, true}),
              "::notice title=vrrp-valid::1 candidate: 0 errors, 0 warnings in 3 checks\n");
    const std::string text = format_reports({oddly_named(), not_checked("broken")}, {"github"});
    EXPECT_THAT(text,
                HasSubstr("::error file=./a%2C b%3Ac%25.json,line=6,col=5,"
                          "title=vrrp_ipv4_addr_update_validation::100%25: a, b%0Aat router "));
    EXPECT_THAT(text, HasSubstr("%0Ahelp: Keep the address.%0Asee: "));
    EXPECT_THAT(text, HasSubstr("\n::warning file=./a%2C b%3Ac%25.json,title=vrrp_version_"));
    EXPECT_THAT(text, HasSubstr("\n::error file=broken,line=3,col=9,title=could not be checked::"
                                "broken:3:9: ends too early.\n"));
    EXPECT_THAT(text, HasSubstr("::notice file=broken,title=vrrp-valid::could not be checked\n"));
    EXPECT_THAT(format_reports({oddly_named()}, {"github", true}), Not(HasSubstr("::warning")));
    EXPECT_THAT(format_reports({checked("clean", {})}, {"github"}),
                HasSubstr("::0 errors, 0 warnings in"));
}

TEST(GitLab, TellsIssuesApartWhereverTheyMove) {
    const auto issues = [](const Report& report) {
        return json::parse(format_reports({report}, {"gitlab"}));
    };
    const json first = issues(oddly_named());
    EXPECT_EQ(first[0]["location"],
              json::parse(R"({"path": "a, b:c%.json", "lines": {"begin": 6}})"));
    EXPECT_EQ(first[0]["severity"], "critical");
    EXPECT_EQ(first[1]["location"]["lines"]["begin"], 1) << "a place is needed";
    EXPECT_EQ(first[1]["severity"], "minor");
    EXPECT_NE(first[0]["fingerprint"], first[1]["fingerprint"]);
    Report moved = oddly_named();
    moved.candidate = moved.findings[0].location.file = "a, b:c%.json";
    moved.findings[0].location.line = 60;
    moved.findings[0].values.clear();
    EXPECT_EQ(issues(moved)[0]["fingerprint"], first[0]["fingerprint"]);
    for (std::string Finding::*const part : {&Finding::path, &Finding::rule, &Finding::message}) {
        Report other = oddly_named();
        other.findings[0].*part += "x";
        EXPECT_NE(issues(other)[0]["fingerprint"], first[0]["fingerprint"]);
    }
    EXPECT_EQ(issues(not_checked("broken"))[0]["severity"], "blocker");
    EXPECT_EQ(format_reports({checked("clean", {})}, {"gitlab"}), "[]\n");
}

TEST(Sarif, HasRulesResultsAndPlaces) {
    const json all =
        json::parse(format_reports({oddly_named(), not_checked("/broken")}, {"sarif"}));
    const json& run = all["runs"][0];
    const json& rules = run["tool"]["driver"]["rules"];
    EXPECT_EQ(rules[0]["defaultConfiguration"]["level"], "warning");
    EXPECT_EQ(rules[0]["shortDescription"]["text"], "Is confirmed.");
    EXPECT_EQ(rules[1]["defaultConfiguration"]["level"], "error");
    EXPECT_THAT(rules[1]["help"]["markdown"], HasSubstr("- `changed <name>`: Keep the address."));
    const json& result = run["results"][0];
    EXPECT_EQ(result["level"], "error");
    EXPECT_EQ(rules[result["ruleIndex"].get<std::size_t>()]["id"], result["ruleId"]);
    EXPECT_EQ(result["message"]["text"],
              "100%: a, b\nNote: the name holds a blank.\nHelp: Keep the address.");
    EXPECT_EQ(result["locations"][0]["physicalLocation"], json::parse(R"({
        "artifactLocation": {"uri": "a%2C%20b%3Ac%25.json"},
        "region": {"startLine": 6, "startColumn": 5, "endLine": 6, "endColumn": 8}})"));
    EXPECT_EQ(result["relatedLocations"].size(), 1U);
    EXPECT_EQ(result["relatedLocations"][0]["physicalLocation"]["region"]["startLine"], 8);
    EXPECT_EQ(run["results"][1].count("suppressions"), 0U);
    EXPECT_FALSE(run["invocations"][0]["executionSuccessful"]);
    EXPECT_EQ(run["invocations"][0]["toolExecutionNotifications"][0]["locations"][0]
                 ["physicalLocation"]["artifactLocation"]["uri"],
              "file:///broken");
    const json accepted = json::parse(format_reports({oddly_named()}, {"sarif", true}));
    EXPECT_EQ(accepted["runs"][0]["results"][1].count("suppressions"), 1U);
    EXPECT_EQ(accepted["runs"][0]["results"][0].count("suppressions"), 0U);
}

}  // namespace
