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

/// "name outcome message" of each test of a suite, behind the suite's name.
std::vector<std::string> tests_of(const pugi::xml_node& suite) {
    const std::string name = suite.attribute("name").value();
    std::vector<std::string> tests = {name};
    for (const pugi::xml_node test : suite.children("testcase")) {
        EXPECT_EQ(test.attribute("classname").value(), name);
        EXPECT_EQ(test.attribute("file").value(), name);
        tests.push_back(test.attribute("name").value() + std::string(" ") +
                        test.first_child().name() + " " +
                        test.first_child().attribute("message").value());
    }
    return tests;
}

TEST(JUnit, HasTheSameTestsWhateverIsFound) {
    const std::string readable = "can be checked ";
    const std::string update = "vrrp_ipv4_addr_update_validation ";
    const std::string version = "vrrp_version_validation ";
    const std::string vrf = "vrrp_vrf_validation ";
    const std::string failed = update + "failure " + changed_address().message;
    Report timed = checked("candidate.json", {changed_address(), bare_warning()});
    timed.rule_seconds = {{"vrrp_vrf_validation", 0.00125}};
    timed.seconds = 0.75;
    Report many = checked("many", {changed_address()});
    many.omitted = {{changed_address().rule, 8, 1}, {bare_warning().rule, 0, 1}};
    for (const bool accepts : {false, true}) {
        const std::string text = formatted({timed, not_checked("broken"), many}, "junit", accepts);
        pugi::xml_document document;
        ASSERT_TRUE(document.load_string(text.c_str()));
        const pugi::xml_node first = document.child("testsuites").first_child();
        const pugi::xml_node second = first.next_sibling();
        const std::string warned = version + (accepts ? "system-out " : "failure ");
        EXPECT_THAT(tests_of(first),
                    ElementsAre("candidate.json", readable + " ", failed,
                                warned + (accepts ? "" : bare_warning().message), vrf + " "));
        EXPECT_THAT(tests_of(second),
                    ElementsAre("broken", readable + "error broken:3:9: ends too early.",
                                update + "skipped ", version + "skipped ", vrf + "skipped "));
        EXPECT_THAT(tests_of(second.next_sibling()),
                    ElementsAre("many", readable + " ", failed + " (and 9 more)",
                                warned + (accepts ? "" : "1 finding"), vrf + " "));
        for (const char* const path :
             {"@tests=4 and @time='0.750000'", accepts ? "@failures=1" : "@failures=2",
              "following-sibling::*[@errors=1 and @skipped=3]",
              "testcase[@time='0.001250' and @name='vrrp_vrf_validation']",
              "testcase/failure[starts-with(., '\ncandidate.json:6:5: error: ')]"}) {
            EXPECT_TRUE(first.select_node(("self::*[" + std::string(path) + "]").c_str())) << path;
        }
    }
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
    Report report = not_checked("broken");
    report.failure_at.column = 0;
    EXPECT_THAT(formatted({report}, "github"), HasSubstr("file=broken,line=3,title="));
    ReportOptions options;
    options.format = "github";
    options.counts_clean = true;
    EXPECT_EQ(formatted({checked("clean", {})}, options),
              "::notice title=vrrp-valid::1 candidate: 0 errors, 0 warnings in 3 checks\n");
    const std::string text = formatted({oddly_named(), not_checked("broken")}, "github");
    for (const char* const part :
         {"::error file=./a%2C b%3Ac%25.json,line=6,col=5,"
          "title=vrrp_ipv4_addr_update_validation::100%25: a, b%0Acause: x%0Aat router ",
          "%0Ahelp: Keep the address.%0Asee: ",
          "\n::warning file=./a%2C b%3Ac%25.json,title=vrrp_version_validation::",
          "\n::error file=broken,line=3,col=9,title=could not be checked::broken:3:9: ends too "
          "early.\n",
          "\n::notice file=broken,title=vrrp-valid::could not be checked\n"}) {
        EXPECT_THAT(text, HasSubstr(part));
    }
    EXPECT_THAT(formatted({oddly_named()}, "github", true),
                HasSubstr("\n::notice file=./a%2C b%3Ac%25.json,title=vrrp_version_"));
}

TEST(GitLab, TellsIssuesApartWhereverTheyMove) {
    const auto issues = [](const Report& report, bool accepts = false) {
        return json::parse(formatted({report}, "gitlab", accepts));
    };
    const json first = issues(oddly_named());
    expect_values(first, {{"/0/location/path", "a, b:c%.json"},
                          {"/0/location/lines/begin", 6},
                          {"/0/severity", "critical"},
                          {"/1/location/lines/begin", 1},
                          {"/1/severity", "minor"}});
    EXPECT_THAT(first[0]["content"]["body"], HasSubstr("help: Keep the address.\n"));
    EXPECT_EQ(issues(oddly_named(), true)[1]["severity"], "info");
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
    EXPECT_EQ(formatted({checked("clean", {})}, "gitlab"), "[]\n");
    Report rest = checked("rest", {});
    rest.omitted = {{"a", 1, 0}, {"b", 0, 1}};
    rest.removed_instances = 1;
    expect_values(issues(rest), {{"/0/check_name", "a"},
                                 {"/0/severity", "critical"},
                                 {"/1/severity", "minor"},
                                 {"/0/description",
                                  "1 more error of a; check with a larger --max-findings to see "
                                  "them"},
                                 {"/2/check_name", "note"},
                                 {"/2/severity", "info"}});
    EXPECT_EQ(issues(not_checked("broken"))[0]["severity"], "blocker");
}

TEST(Sarif, HasRulesResultsAndPlaces) {
    const json all = json::parse(formatted({oddly_named(), not_checked("/broken")}, "sarif"));
    expect_values(all["runs"][0],
                  {{"/tool/driver/rules/0/id", "vrrp_version_validation"},
                   {"/tool/driver/rules/0/defaultConfiguration/level", "warning"},
                   {"/tool/driver/rules/0/shortDescription/text", "Is confirmed."},
                   {"/tool/driver/rules/1/defaultConfiguration/level", "error"},
                   {"/tool/driver/rules/1/help/markdown",
                    "Keeps its address.\n\n- `changed <name>`: Keep the address."},
                   {"/results/0/ruleId", "vrrp_ipv4_addr_update_validation"},
                   {"/results/0/level", "error"},
                   {"/results/0/message/text",
                    "100%: a, b\nCause: x\nNote: the name holds a blank.\nHelp: Keep the address."},
                   {"/results/0/locations/0/physicalLocation", json::parse(R"({
            "artifactLocation": {"uri": "a%2C%20b%3Ac%25.json"},
            "region": {"startLine": 6, "startColumn": 5, "endLine": 6, "endColumn": 8}})")},
                   {"/results/0/relatedLocations/0/physicalLocation/region/startLine", 8},
                   {"/results/0/relatedLocations/1", "missing"},
                   {"/results/1/locations/0/physicalLocation/region/startLine", 1},
                   {"/results/1/suppressions", "missing"},
                   {"/invocations/0/executionSuccessful", false},
                   {"/invocations/0/toolExecutionNotifications/0/locations/0/physicalLocation"
                    "/artifactLocation/uri",
                    "file:///broken"}});
    const json accepted = json::parse(formatted({oddly_named()}, "sarif", true));
    expect_values(accepted["runs"][0], {{"/results/0/suppressions", "missing"},
                                        {"/results/1/suppressions/0/kind", "external"},
                                        {"/invocations/0/executionSuccessful", true}});
}

}  // namespace
