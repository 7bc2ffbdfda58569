// Reports as their readers see them: operators, programs, pipelines.
#include <gmock/gmock.h>
#include <rapidjson/document.h>
#include <rapidjson/schema.h>
#include <rapidjson/stringbuffer.h>
#include <sys/resource.h>

#include <csignal>

#include <nlohmann/json.hpp>
#include <pugixml.hpp>

#include "commands/exit_code.h"
#include "errors/input_error.h"
#include "folder.h"
#include "reports/json_reader.h"
#include "reports/report_format.h"
#include "reports/report_stream.h"
#include "samples.h"

using nlohmann::json;
using namespace testing;

namespace {

const Report kBoth = checked("candidate.json", {changed_address(), bare_warning()});
const Report kWarned = checked("warned", {bare_warning()});
const Report kClean = checked("clean", {});
const Report kBroken = not_checked("broken");

std::string formatted(const std::vector<Report>& reports, const std::string& format) {
    return format_reports(reports, {format});
}

/// What the schema in docs/ has against `text`; nothing when it is as described.
std::string against_schema(const std::string& text) {
    rapidjson::Document schema;
    schema.Parse(content_of(REPORT_SCHEMA).c_str());
    EXPECT_FALSE(schema.HasParseError());
    rapidjson::Document document;
    if (document.Parse(text.c_str()).HasParseError()) {
        return "no JSON";
    }
    const rapidjson::SchemaDocument described(schema);
    rapidjson::SchemaValidator validator(described);
    if (document.Accept(validator)) {
        return "";
    }
    rapidjson::StringBuffer place;
    validator.GetInvalidDocumentPointer().StringifyUriFragment(place);
    return place.GetString() + std::string(": ") + validator.GetInvalidSchemaKeyword();
}

TEST(Reports, TakeTheWorstExitCode) {
    const std::pair<std::vector<Report>, int> rows[] = {
        {{}, 0},
        {{kClean, kClean}, 0},
        {{kClean, kWarned}, 3},
        {{kWarned, kBoth, kClean}, 1},
        {{kBoth, kBroken, kWarned}, 2},
        {{kBroken}, 2},
    };
    for (const auto& [reports, code] : rows) {
        EXPECT_EQ(exit_code(reports, false), code);
        EXPECT_EQ(exit_code(reports, true), code == 3 ? 0 : code) << "with warnings accepted";
    }
}

TEST(Reports, TellTheOperatorWhereWhyAndWhatToDo) {
    const std::string finding =
        "candidate.json:6:5: error: IPv4 address cannot be changed on interface l3 vlan10.\n"
        "    at router vrrp interface l3-vlan10 address-family ipv4 vr-id 5\n"
        "    running: config interface l3 vlan10 ipv4 address ip 192.0.2.2/25 (running.json:8:3)\n"
        "    candidate: config interface l3 vlan10 ipv4 address ip 192.0.2.2/24 "
        "(candidate.json:4:7)\n"
        "    note: the name holds a blank.\n"
        "    help: Keep the address.\n"
        "    see: vrrp-valid explain vrrp_ipv4_addr_update_validation\n";
    const std::string warning =
        "candidate.json: warning: changing the VRRP router version will restart the VRRP router "
        "process.\n"
        "    at router vrrp interface a address-family ipv4 vr-id 1 version\n"
        "    see: vrrp-valid explain vrrp_version_validation\n";
    const std::string result =
        "candidate.json: 1 error, 1 warning in 3 checks against an empty running configuration\n";
    EXPECT_EQ(format_text(kBoth, {}), finding + warning + result);
    EXPECT_EQ(format_reports({kBoth, kBroken}, {"text", false, 0, true}), finding + warning);
    EXPECT_THAT(formatted({kBoth, kBroken, kWarned}, "text"),
                EndsWith("3 candidates: 1 error, 2 warnings in 6 checks, 1 not checked\n"));
    EXPECT_EQ(format_text(kBroken, {}), "broken: could not be checked\n");
}

TEST(Reports, ShowTheOperatorTheLineAndWhatFindingsHaveInCommon) {
    Report report = checked("candidate.json", {changed_address(), bare_warning(), bare_warning()});
    report.sources = {
        std::make_shared<SourceText>("candidate.json", "1\n2\n3\n4\n5\n\t\tä\"id\": 5")};
    report.findings[0].location.column = 4;
    report.findings[0].cause = report.findings[2].cause = "layer-3 interface x is not there";
    const std::string text = format_text(report, {true, true, true});
    EXPECT_EQ(
        text.find("candidate.json:6:4: \033[1mnote:\033[0m layer-3 interface x is not there: "
                  "2 findings\ncandidate.json:6:4: \033[1;31merror:\033[0m IPv4 address cannot"),
        0U)
        << text;
    EXPECT_THAT(text,
                HasSubstr("\n    6 |   ä\"id\": 5\n      |    \033[1;31m^~~~\033[0m\n    at "));
    const std::string warning = "\033[1;33mwarning:\033[0m ";
    EXPECT_THAT(text, HasSubstr("update_validation\ncandidate.json: " + warning))
        << "what has its cause in common comes together";
}

TEST(Reports, SayWhatACleanResultDoesNotMean) {
    Report report = checked("candidate", {});
    report.removed_instances = 2;
    report.unknown_data = {7, {"a", "b"}, {"candidate:3: /config/vlna"}};
    EXPECT_THAT(format_text(report, {}),
                EndsWith("candidate: removes 2 VRRP instances\n"
                         "candidate: skipped 7 nodes that no module describes: a, b\n"
                         "candidate: skipped, not defined in its module: "
                         "candidate:3: /config/vlna\n"));
    report.requests = 0;
    for (const char* const format : {"text", "junit"}) {
        EXPECT_THAT(formatted({report}, format), HasSubstr("no rule ran"));
        EXPECT_THAT(formatted({report}, format), Not(HasSubstr("no VRRP instances")));
    }
    report.instances.clear();
    EXPECT_THAT(formatted({report}, "text"), HasSubstr(": no VRRP instances: no rule ran\n"));
    EXPECT_THAT(formatted({kBroken}, "text"), Not(HasSubstr("no rule ran")));
    const json shown = json::parse(formatted({report}, "json"))["reports"][0];
    EXPECT_EQ(shown["removed_instances"], 2);
    EXPECT_EQ(shown["skipped"], json::parse(R"({"nodes": 7, "modules": ["a", "b"],
        "unknown": ["candidate:3: /config/vlna"]})"));
}

TEST(Reports, CountTheFindingsThatTheyDoNotHold) {
    Report report = checked("candidate", {changed_address()});
    report.omitted = {{changed_address().rule, 8, 1}, {bare_warning().rule, 0, 1}};
    EXPECT_EQ(exit_code({report}, true), 1);
    EXPECT_THAT(
        formatted({report}, "text"),
        AllOf(HasSubstr("candidate: 9 errors, 2 warnings in "),
              HasSubstr(
                  "; check with a larger --max-findings to see them\ncandidate: 1 more warning")));
    EXPECT_EQ(against_schema(formatted({report}, "json")), "");
    const json shown = json::parse(formatted({report}, "json"));
    EXPECT_EQ(shown["summary"]["errors"], 9);
    EXPECT_EQ(shown["reports"][0]["omitted"][1]["warnings"], 1);
    const std::string tests = formatted({report}, "junit");
    EXPECT_THAT(tests, HasSubstr("vlan10. (and 9 more)"));
    EXPECT_THAT(tests, HasSubstr("type=\"warning\" message=\"1 finding\""));
    report.findings.clear();
    report.omitted = {{bare_warning().rule, 0, 1}};
    EXPECT_EQ(exit_code({report}, false), 3);
}

TEST(Reports, SayInEveryFormatWhatTheyDoNotHold) {
    Report report = checked("candidate", {changed_address()});
    report.omitted = {{"vrrp_vrf_validation", 8, 1}};
    report.unknown_data = {7, {"a"}, {"candidate:3: /config/vlna"}};
    for (const std::string& format : report_formats()) {
        std::string text;
        ReportOptions options;
        options.format = format;
        ReportStream stream(options, [&](const std::string& part) { text += part; });
        stream.add(report);
        stream.finish(3);
        const bool is_json = format == "json";
        for (const char* const words :
             {is_json ? "\"errors\": 8" : "8 more errors and 1 more warning of vrrp_vrf_validation",
              is_json ? "\"nodes\": 7" : "skipped 7 nodes that no module describes: a",
              "candidate:3: /config/vlna",
              is_json            ? "\"not_checked\": 3"
              : format == "text" ? ", 3 not checked"
                                 : "interrupted: 3 candidates were not checked"}) {
            EXPECT_THAT(text, HasSubstr(words)) << format;
        }
    }
}

TEST(Reports, AreWholeInEveryFormatHoweverMany) {
    std::vector<Report> many(75, kBoth);
    many.push_back(kWarned);
    for (const std::string& format : report_formats()) {
        ReportOptions options{format};
        const std::string refused = format_reports(many, options);
        EXPECT_GT(refused.size(), many.size() * 400) << format;
        options.accept_warnings = true;
        const std::string accepted = format_reports(many, options);
        const bool tells_accepted = format != "text" && format != "json";
        EXPECT_EQ(accepted != refused, tells_accepted) << format;
        options.accept_warnings = false;
        options.max_warnings = many.size() - 1;
        EXPECT_EQ(format_reports(many, options), refused) << format;
        options.max_warnings = many.size();
        EXPECT_EQ(format_reports(many, options), accepted) << format;
    }
    pugi::xml_document document;
    ASSERT_TRUE(document.load_string(formatted(many, "junit").c_str()));
    EXPECT_EQ(document.select_nodes("/testsuites/testsuite[@failures=2]").size(), 75U);
    EXPECT_EQ(json::parse(formatted(many, "sarif"))["runs"][0]["results"].size(), 151U);
    EXPECT_EQ(json::parse(formatted(many, "gitlab")).size(), 151U);
}

TEST(Reports, SayThatThereIsNoRoomForThem) {
    const std::vector<Report> many(75, kBoth);
    const std::size_t whole = formatted(many, "junit").size();
    rlimit sizes{};
    getrlimit(RLIMIT_FSIZE, &sizes);
    const rlimit none{0, sizes.rlim_max};
    static_cast<void>(std::signal(SIGXFSZ, SIG_IGN));
    setrlimit(RLIMIT_FSIZE, &none);
    std::string reason = "kept in memory";
    try {
        formatted(many, "junit");
    } catch (const InputError& error) {
        reason = error.what();
    }
    setenv("TMPDIR", "/missing", 1);
    EXPECT_EQ(formatted(many, "junit").size(), whole) << "kept in memory";
    unsetenv("TMPDIR");
    setrlimit(RLIMIT_FSIZE, &sizes);
    static_cast<void>(std::signal(SIGXFSZ, SIG_DFL));
    EXPECT_EQ(
        reason,
        "a temporary file for the report in /tmp cannot be written: File too large; make room "
        "there, or name another folder in TMPDIR");
}

TEST(Reports, AreOneObjectOfTheDescribedFormInJson) {
    Report changed = kClean;
    changed.running = "running.json";
    changed.changes = {{ChangeKind::changed, "/a/b", "a", "b", "1", "2", {}}};
    for (const auto& reports : std::vector<std::vector<Report>>{
             {}, {kClean}, {kBroken}, {kBoth, kBroken, kWarned, changed}}) {
        EXPECT_EQ(against_schema(formatted(reports, "json")), "");
    }
    json all = json::parse(formatted({kBoth, kBroken, kWarned, changed}, "json"));
    EXPECT_EQ(all["summary"], json::parse(R"({"candidates": 4, "errors": 1, "warnings": 2,
        "not_checked": 1, "skipped": 0})"));
    const json& broken = all["reports"][1];
    EXPECT_EQ(broken["error"], "broken:3:9: ends too early.");
    EXPECT_EQ(broken["error_location"]["column"], 9);
    EXPECT_EQ(broken["valid"], false);
    EXPECT_EQ(all["reports"][0]["valid"], false);
    EXPECT_EQ(all["reports"][2]["valid"], true) << "a warning leaves it valid";
    EXPECT_EQ(all["reports"][0]["findings"][0]["values"][0], json::parse(R"({
        "datastore": "running", "path": "/config/interface/l3{vlan10}/ipv4/address/ip",
        "cli_path": "config interface l3 vlan10 ipv4 address ip",
        "value": "192.0.2.2/25", "location": {"file": "running.json", "line": 8, "column": 3}})"));
    EXPECT_TRUE(all["reports"][0]["findings"][1]["location"].is_null());
    all["reports"][0]["findings"][0].erase("message");
    EXPECT_EQ(against_schema(all.dump()), "#/reports/0/findings/0: required");
}

TEST(Reports, AreReadBackFromJson) {
    Report full = kBoth;
    full.running = "running.json";
    full.omitted = {{"first", 1, 2}};
    full.instances.push_back({"l3 a b", "ipv6", "7"});
    full.removed_instances = 2;
    full.unknown_data = {7, {"a"}, {"b"}};
    full.changes = {{ChangeKind::moved, "/a/b", "a", "b", "first", "after c", {}},
                    {ChangeKind::removed, "/a", "", "a", {}, {}, {}}};
    for (const auto& reports : std::vector<std::vector<Report>>{{}, {full, kBroken, kWarned}}) {
        const std::string text = formatted(reports, "json");
        for (const char* const format : {"json", "text"}) {
            EXPECT_EQ(formatted(reports_from_json("file", text).reports, format),
                      formatted(reports, format));
        }
        EXPECT_THROW(reports_from_json("file", text.substr(0, text.size() - 3)), InputError);
    }
    std::string text;
    ReportOptions options;
    options.format = "json";
    ReportStream stream(options, [&](const std::string& part) { text += part; });
    stream.add(kClean);
    stream.finish(4);
    EXPECT_EQ(reports_from_json("file", text).not_reached, 4U);
    EXPECT_EQ(exit_code(stream.summary(), true), 2);
    EXPECT_THROW(reports_from_json("file", R"({"format_version": "2.0"})"), InputError);
}

/// "name outcome message" of each test, each suite's file before its own.
std::vector<std::string> tests_of(const pugi::xml_node& suites) {
    std::vector<std::string> tests;
    for (const pugi::xml_node suite : suites.children()) {
        tests.emplace_back(suite.attribute("name").value());
        for (const pugi::xml_node test : suite.children("testcase")) {
            EXPECT_STREQ(test.attribute("file").value(), suite.attribute("name").value());
            const pugi::xml_node outcome = test.first_child();
            tests.push_back(test.attribute("name").value() + std::string(" ") + outcome.name() +
                            " " + outcome.attribute("message").value());
        }
    }
    return tests;
}

TEST(Reports, HaveTheSameTestsInJUnitWhateverIsFound) {
    const std::string readable = "can be checked ";
    const std::string update = "vrrp_ipv4_addr_update_validation ";
    const std::string version = "vrrp_version_validation ";
    const std::string vrf = "vrrp_vrf_validation ";
    const std::string failed = "failure " + changed_address().message;
    const auto twice = checked("twice", {changed_address(), changed_address()});
    Report timed = kBoth;
    timed.rule_seconds = {{"vrrp_vrf_validation", 0.00125}};
    timed.seconds = 0.75;
    for (const bool accept_warnings : {false, true}) {
        pugi::xml_document document;
        ASSERT_TRUE(document.load_string(
            format_reports({timed, kBroken, twice}, {"junit", accept_warnings}).c_str()));
        const pugi::xml_node suites = document.child("testsuites");
        EXPECT_EQ(suites.attribute("tests").as_int(), 12);
        EXPECT_EQ(suites.attribute("failures").as_int(), accept_warnings ? 2 : 3);
        EXPECT_EQ(suites.attribute("errors").as_int(), 1);
        EXPECT_EQ(suites.attribute("skipped").as_int(), 3);
        EXPECT_STREQ(suites.attribute("time").value(), "0.750000");
        const std::string warned =
            accept_warnings ? "system-out " : "failure " + bare_warning().message;
        const std::string clean = " ";
        EXPECT_THAT(tests_of(suites),
                    ElementsAre("candidate.json", readable + clean, update + failed,
                                version + warned, vrf + clean, "broken",
                                readable + "error broken:3:9: ends too early.", update + "skipped ",
                                version + "skipped ", vrf + "skipped ", "twice", readable + clean,
                                update + failed + " (and 1 more)", version + clean, vrf + clean));
        const pugi::xml_node timed_test = suites.select_node("//testcase[@time]").node();
        EXPECT_EQ(timed_test.attribute("name").value() + std::string(" "), vrf);
        EXPECT_STREQ(timed_test.attribute("time").value(), "0.001250");
        const pugi::xml_node failure = suites.select_node("//failure").node();
        EXPECT_THAT(failure.text().get(), HasSubstr("candidate.json:6:5: error: "));
        EXPECT_THAT(failure.text().get(), HasSubstr("(running.json:8:3)"));
        EXPECT_STREQ(suites.select_node("//error").node().text().get(),
                     "broken:3:9: ends too early.");
    }
}

/// Every text of it would end a line, an attribute or a string, clear the screen, or is no UTF-8.
Report hostile(bool is_checked) {
    const std::string text =
        "\n::error::]]>\"'<&>,%\t\r\033[2J\x9b\u202e\u2028\xff\xed\xa0\x80\uffff";
    Finding finding = changed_address();
    for (std::string* const part : {&finding.path, &finding.cli_path, &finding.message,
                                    &finding.note, &finding.help, &finding.location.file}) {
        *part += text;
    }
    for (ReadValue& value : finding.values) {
        value.cli_path = value.path = value.value = value.location.file = text;
    }
    Report report = is_checked ? checked(text, {finding}) : not_checked(text);
    report.running = text;
    report.unknown_data = {1, {text}, {text}};
    return report;
}

TEST(Reports, HoldWhateverTextsTheyAreGiven) {
    for (const bool is_checked : {true, false}) {
        for (const std::string& format : report_formats()) {
            SCOPED_TRACE(format);
            const std::string shown = formatted({hostile(is_checked)}, format);
            EXPECT_THAT(shown, EndsWith("\n"));
            ReportOptions silent{format};
            silent.silent = true;
            EXPECT_EQ(format_reports({hostile(is_checked)}, silent), "");
            for (const char* const forged : {"\n::error::]]", "\033", "\x9b", "\u202e", "\u2028",
                                             "\t\r", "\xff", "\xed", "\uffff"}) {
                EXPECT_THAT(shown, Not(HasSubstr(forged)));
            }
            if (format == "text") {
                const auto lines = std::count(shown.begin(), shown.end(), '\n');
                EXPECT_EQ(lines, is_checked ? 10 : 1) << shown;
            }
            if (format == "github") {
                EXPECT_EQ(std::count(shown.begin(), shown.end(), '\n'), 2) << shown;
            }
        }
        EXPECT_EQ(against_schema(formatted({hostile(is_checked)}, "json")), "");
        pugi::xml_document document;
        EXPECT_TRUE(document.load_string(formatted({hostile(is_checked)}, "junit").c_str()));
    }
}

}  // namespace
