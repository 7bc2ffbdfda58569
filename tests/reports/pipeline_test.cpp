// Reports as pipelines and review tools read them.
#include <gmock/gmock.h>

#include <nlohmann/json.hpp>
#include <pugixml.hpp>

#include "samples.h"

using nlohmann::json;
using namespace testing;

namespace {

/// A report whose file has a name of letters that each tool has a meaning for.
Report oddly_named() {
    Report report = checked("./a, b:c%.json", {changed_address(), bare_warning()});
    report.findings[0].location.file = report.candidate;
    report.findings[0].message = "100%: a, b";
    report.findings[0].cause = "x";
    report.findings[0].node_location = {report.candidate, 5, 1};
    report.findings[0].values[1].location = {};
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

TEST(JUnit, HasTheSameTestsWhateverIsFound) {
    Report timed = checked("candidate.json", {changed_address()});
    timed.seconds = 0.75;
    timed.omitted = {{changed_address().rule, 8, 1}, {bare_warning().rule, 0, 1}};
    const std::vector<Report> reports = {timed, not_checked("broken")};
    pugi::xml_document document;
    ASSERT_TRUE(document.load_string(formatted(reports, "junit").c_str()));
    std::string tests;
    for (const auto& found : document.select_nodes("/testsuites/testsuite/testcase")) {
        const pugi::xml_node test = found.node();
        EXPECT_STREQ(test.attribute("classname").value(), test.attribute("file").value());
        tests += test.attribute("file").value() + std::string(" ") +
                 test.attribute("name").value() + " " + test.first_child().name() + " " +
                 test.first_child().attribute("message").value() + "\n";
    }
    EXPECT_EQ(tests,
              "candidate.json can be checked  \n"
              "candidate.json vrrp_ipv4_addr_update_validation failure IPv4 address cannot be "
              "changed on interface l3 vlan10. (and more)\n"
              "candidate.json vrrp_version_validation failure 1 more warning of "
              "vrrp_version_validation; check with a larger --max-findings to see them\n"
              "candidate.json vrrp_vrf_validation  \n"
              "broken can be checked error ends too early.\n"
              "broken vrrp_ipv4_addr_update_validation skipped \n"
              "broken vrrp_version_validation skipped \n"
              "broken vrrp_vrf_validation skipped \n");
    for (const char* const path :
         {"@tests=4 and @failures=2 and @time='0.750000'", "@errors=1 and @skipped=3",
          "testcase/failure[@type='warning']",
          "testcase/failure[@type='error' and starts-with(., '\ncandidate.json:6:5: error: ')]"}) {
        EXPECT_TRUE(document.select_node(("//testsuite[" + std::string(path) + "]").c_str()))
            << path;
    }
    ASSERT_TRUE(document.load_string(formatted(reports, "junit", true).c_str()));
    EXPECT_TRUE(document.select_node("//testcase[@name='vrrp_version_validation']/system-out"));
    EXPECT_EQ(document.select_nodes("//testcase[failure]").size(), 1U) << "the error";
}

/// Each row is the place of a value in `document`, and what that is to be.
void expect_values(const json& document,
                   const std::vector<std::pair<std::string, json>>& expected) {
    for (const auto& [pointer, value] : expected) {
        const json::json_pointer place(pointer);
        EXPECT_EQ(document.contains(place) ? document.at(place) : "missing", value) << pointer;
    }
}

TEST(GitHub, AnnotatesEachPlace) {
    Report broken = not_checked("broken");
    broken.failure_at.column = 0;
    broken.failure = "broken:3: ends too early.";
    const std::string text = formatted({oddly_named(), broken}, "github");
    for (const char* const part :
         {"::error file=./a%2C b%3Ac%25.json,line=6,col=5,title=vrrp_ipv4_addr_update_validation::",
          "::100%25: a, b%0Acause: x%0Aat router ", "%0Ahelp: Keep the address.%0Asee: ",
          "\n::warning file=./a%2C b%3Ac%25.json,title=vrrp_version_validation::",
          "\n::error file=broken,line=3,title=not-checked::ends too early.\n"}) {
        EXPECT_THAT(text, HasSubstr(part));
    }
    ReportOptions options = in("github", true);
    options.counts_clean = true;
    EXPECT_THAT(formatted({checked("clean", {}), oddly_named()}, options),
                AllOf(StartsWith("::error file=./a"),
                      HasSubstr("\n::notice file=./a%2C b%3Ac%25.json,title=vrrp_version_"),
                      EndsWith("\n::notice title=vrrp-valid::2 candidates: 1 error, 1 warning in "
                               "6 checks, 1 refused, 1 clean%0Avrrp_ipv4_addr_update_validation: "
                               "1 finding%0Avrrp_version_validation: 1 finding\n")));
}

TEST(GitLab, TellsIssuesApartWhereverTheyMove) {
    const auto issues = [](const Report& report, bool accepts = false) {
        return json::parse(formatted({report}, "gitlab", accepts));
    };
    Report whole = oddly_named();
    whole.omitted = {{"a", 1, 0}};
    whole.removed_instances = 1;
    const json first = issues(whole);
    expect_values(first, {{"/0/location/path", "a, b:c%.json"},
                          {"/0/location/lines/begin", 6},
                          {"/0/severity", "critical"},
                          {"/1/location/lines/begin", 1},
                          {"/1/severity", "minor"},
                          {"/2/check_name", "a"},
                          {"/2/severity", "critical"},
                          {"/3/check_name", "note"},
                          {"/3/severity", "info"}});
    EXPECT_THAT(first[0]["content"]["body"], HasSubstr("help: Keep the address.\n"));
    EXPECT_EQ(issues(oddly_named(), true)[1]["severity"], "info");
    EXPECT_EQ(issues(not_checked("broken"))[0]["severity"], "blocker");
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
}

TEST(Sarif, HasRulesResultsAndPlaces) {
    const json all = json::parse(formatted({oddly_named(), not_checked("/broken")}, "sarif"));
    expect_values(
        all["runs"][0],
        {{"/tool/driver/rules/0/id", "vrrp_version_validation"},
         {"/tool/driver/rules/0/defaultConfiguration/level", "warning"},
         {"/tool/driver/rules/0/shortDescription/text", "Is confirmed."},
         {"/tool/driver/rules/1/defaultConfiguration/level", "error"},
         {"/tool/driver/rules/1/help/markdown",
          "Keeps its address.\n\n- `changed <name>`: Keep the address."},
         {"/results/0/ruleId", "vrrp_ipv4_addr_update_validation"},
         {"/results/0/message/text",
          "100%: a, b\nCause: x\nNote: the name holds a blank.\nHelp: Keep the address."},
         {"/results/0/locations/0/physicalLocation", json::parse(R"({
            "artifactLocation": {"uri": "a%2C%20b%3Ac%25.json"},
            "region": {"startLine": 6, "startColumn": 5, "endLine": 6, "endColumn": 8}})")},
         {"/results/0/relatedLocations/0/physicalLocation/region/startLine", 5},
         {"/results/0/relatedLocations/1/physicalLocation/region/startLine", 8},
         {"/results/0/relatedLocations/2", "missing"},
         {"/results/1/suppressions", "missing"},
         {"/invocations/0/executionSuccessful", false},
         {"/results/2/ruleId", "not-checked"},
         {"/results/2/level", "error"},
         {"/results/2/locations/0/physicalLocation/artifactLocation/uri", "file:///broken"},
         {"/tool/driver/rules/2/id", "not-checked"}});
    const json accepted = json::parse(formatted({oddly_named()}, "sarif", true));
    expect_values(accepted["runs"][0], {{"/results/1/suppressions/0/kind", "external"},
                                        {"/invocations/0/executionSuccessful", true}});
}

}  // namespace
