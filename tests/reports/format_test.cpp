// Reports in text and JSON, and what holds for every format.
#include <gmock/gmock.h>
#include <rapidjson/document.h>
#include <rapidjson/schema.h>
#include <rapidjson/stringbuffer.h>
#include <sys/resource.h>

#include <csignal>
#include <map>
#include <nlohmann/json.hpp>
#include <pugixml.hpp>
#include <regex>

#include "folder.h"
#include "reports/report_json.h"
#include "reports/report_reader.h"
#include "samples.h"

using nlohmann::json;
using namespace testing;

namespace {

const Report kBoth = checked("candidate.json", {changed_address(), bare_warning()});
const Report kWarned = checked("warned", {bare_warning()});
const Report kClean = checked("clean", {});
const Report kBroken = not_checked("broken");

/// A report in which whatever can be told is told.
Report full() {
    Report report = kBoth;
    report.running = "running.json";
    report.findings[0].cause = "layer-3 interface x is not there";
    report.findings[0].node_location = {"candidate.json", 9, 1};
    report.omitted = {{"first", 1, 2}};
    report.instances.push_back({"l3 a b", "ipv6", "7"});
    report.removed_instances = 2;
    report.unknown_data = {7, {"a", "b"}, {"candidate:3: /config/vlna"}};
    report.changes = {{ChangeKind::moved, "/a/b", "a", "b", "first", "after c", {}},
                      {ChangeKind::removed, "/a", "", "a", "", {}, {}}};
    return report;
}

/// What the schema `name` in docs/ has against `text`, no member that it does not name; nothing
/// when it is as described.
std::string against_schema(const std::string& text, const std::string& name = "report") {
    rapidjson::Document schema;
    schema.Parse(std::regex_replace(content_of(SCHEMAS + name + ".schema.json"),
                                    std::regex("\"required\":"),
                                    "\"additionalProperties\": false, \"required\":")
                     .c_str());
    rapidjson::Document document;
    EXPECT_FALSE(schema.HasParseError() || document.Parse(text.c_str()).HasParseError());
    const rapidjson::SchemaDocument described(schema);
    rapidjson::SchemaValidator validator(described);
    document.Accept(validator);
    rapidjson::StringBuffer place;
    validator.GetInvalidDocumentPointer().StringifyUriFragment(place);
    return validator.IsValid()
               ? ""
               : place.GetString() + std::string(": ") + validator.GetInvalidSchemaKeyword();
}

TEST(Text, TellsTheOperatorWhereWhyAndWhatToDo) {
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
        "candidate.json: 1 error, 1 warning in 3 checks against an empty running configuration; "
        "the rules that compare cannot refuse\n";
    EXPECT_EQ(formatted({kBoth}, "text"), finding + warning + result);
    const std::string broken = "broken:3:9: error: ends too early.\n";
    EXPECT_EQ(formatted({kBroken}, "text"), broken + "broken: could not be checked\n");
    ReportOptions options;
    options.quiet = true;
    EXPECT_EQ(formatted({kBoth, kBroken}, options), finding + warning + broken);
    options.format = "concise";
    EXPECT_EQ(formatted({kBoth, kClean, kBroken}, options),
              finding.substr(0, finding.find('\n')) + " [vrrp_ipv4_addr_update_validation]\n" +
                  "candidate.json:1:1: " + warning.substr(16, warning.find('\n') - 16) +
                  " [vrrp_version_validation]\n" + "broken:3:9: error: ends too early. [not-che" +
                  "cked]\n");
    options.silent = true;
    EXPECT_EQ(formatted({kBoth, kBroken}, options), "");
    Report missing = kBroken;
    missing.failure_at = {};
    missing.running = missing.failure_at.file = "running";
    missing.failure = "running: cannot be opened";
    EXPECT_THAT(formatted({missing}, "text"), StartsWith("broken: error: running: cannot be"));
    EXPECT_THAT(
        formatted({kBoth, kBroken, full()}, "text"),
        EndsWith("3 candidates: 3 errors, 4 warnings in 6 checks, 2 refused, 1 not checked, "
                 "7 nodes of other modules not checked\nfirst: 3 findings\n"
                 "vrrp_ipv4_addr_update_validation: 2 findings\n"
                 "vrrp_version_validation: 2 findings\n"));
}

TEST(Text, ShowsTheLineAndWhatFindingsHaveInCommon) {
    Report report = checked("candidate.json",
                            {bare_warning(), changed_address(), bare_warning(), bare_warning()});
    report.sources = {
        std::make_shared<SourceText>("candidate.json", "1\n2\n3\n4\n5\n\t\tä\"id\": 5")};
    report.findings[1].location.column = 4;
    report.findings[1].cause = report.findings[3].cause = "layer-3 interface x is not there";
    report.findings[2].message = "last.";
    const std::string see = "validation\ncandidate.json: \033[1;33mwarning:\033[0m ";
    ReportOptions options;
    options.colour = "always";
    const std::string text = formatted({report}, options);
    EXPECT_GT(text.find("last."), text.find("note:"));
    EXPECT_THAT(
        text, AllOf(HasSubstr("version_validation\ncandidate.json:6:4: \033[1mnote:\033[0m "
                              "layer-3 interface x is not there:\n"
                              "candidate.json:6:4: \033[1;31merror:\033[0m IPv4"),
                    HasSubstr("\n    6 |   ä\"id\": 5\n      |    \033[1;31m^~~~\033[0m\n    at "),
                    HasSubstr("update_" + see), HasSubstr("version_" + see + "last.")));
    EXPECT_THAT(formatted({report}, "text"), Not(HasSubstr(" | ")));
}

TEST(Text, OnlyCountsTheCleanOfManyThatHaveNothingElseToSay) {
    std::vector<Report> others(6, kClean);
    others[0].findings = {bare_warning()};
    others[1].omitted = {{"first", 0, 1}};
    others[2].changes = full().changes;
    others[3].requests = 0;
    others[4].removed_instances = 1;
    others[5].unknown_data.unknown = {"a"};
    ReportOptions options;
    options.counts_clean = true;
    EXPECT_THAT(formatted({kClean}, options), StartsWith("1 candidate: "));
    for (const Report& other : others) {
        EXPECT_THAT(formatted({other}, options), Not(StartsWith("1 candidate: ")));
    }
}

TEST(EveryFormat, SaysWhatItDoesNotHold) {
    const std::pair<const char*, const char*> rows[] = {
        {"1 more error and 2 more warnings of first; check with a larger --max-findings to see",
         "\"warnings\": 2"},
        {"removes 2 VRRP instances", "\"removed_instances\": 2"},
        {"7 nodes of other modules not checked: a, b", "\"nodes\": 7"},
        {"not defined in its module, not checked: candidate:3: /config/vlna", "candidate:3: /con"},
        {"no VRRP instances: no rule ran", "\"requests\": 0"},
    };
    Report report = full();
    report.findings.clear();
    report.instances.clear();
    report.requests = 0;
    for (const std::string& format : report_formats()) {
        const std::string text = formatted({report}, in(format), 3);
        if (format == "concise") {
            EXPECT_EQ(text, "candidate.json:1:1: error: " + std::string(rows[0].first) +
                                " them [first]\n");
            continue;
        }
        for (const auto& [words, in_json] : rows) {
            EXPECT_THAT(text, HasSubstr(format == "json" ? in_json : words)) << format;
        }
        EXPECT_THAT(text, HasSubstr(format == "json"   ? "\"not_checked\": 3"
                                    : format == "text" ? ", 3 not checked"
                                                       : "interrupted: 3 candidates were not"));
    }
}

TEST(EveryFormat, IsWholeInATemporaryFileAndSaysWhenThereIsNoRoomForOne) {
    const std::vector<Report> many(75, kBoth);
    const Folder folder;
    setenv("TMPDIR", folder.path.c_str(), 1);
    const auto page = [&] {
        const std::string text = formatted(many, "html");
        return text.substr(text.find("<article>"));  // behind the time
    };
    const std::string in_file = page();
    rlimit sizes{};
    getrlimit(RLIMIT_FSIZE, &sizes);
    const rlimit none{0, sizes.rlim_max};
    static_cast<void>(std::signal(SIGXFSZ, SIG_IGN));
    setrlimit(RLIMIT_FSIZE, &none);
    EXPECT_EQ(refusal_of([&] { formatted(many, "html"); }),
              "a temporary file for the report in " + folder.path +
                  " cannot be written: File too large; make room there, or name another folder "
                  "in TMPDIR");
    setrlimit(RLIMIT_FSIZE, &sizes);
    setenv("TMPDIR", "/missing", 1);
    EXPECT_EQ(page(), in_file) << "kept in memory";
}

TEST(Json, IsOneObjectOfTheDescribedForm) {
    EXPECT_EQ(against_schema(formatted({}, "json")), "");
    const std::string text = formatted({full(), kBroken, kWarned}, "json");
    EXPECT_EQ(against_schema(text), "");
    json all = json::parse(text);
    EXPECT_EQ(all["summary"], json::parse(R"({"candidates": 3, "refused": 1, "warned": 1,
        "clean": 0, "not_checked": 1, "errors": 2, "warnings": 4, "unknown_nodes": 7})"));
    EXPECT_FALSE(all["reports"][0]["valid"] || all["reports"][1]["valid"]);
    EXPECT_TRUE(all["reports"][2]["valid"]) << "warnings do not count";
    EXPECT_EQ(against_schema(format_difference_json("a", "b", *full().changes, full().unknown_data),
                             "diff"),
              "");
    all["reports"][0]["findings"][0].erase("message");
    EXPECT_EQ(against_schema(all.dump()), "#/reports/0/findings/0: required");
}

TEST(Json, IsReadBack) {
    const std::vector<Report> reports = {full(), kBroken, kWarned};
    const std::string text = formatted(reports, in("json"), 4);
    const StoredReports stored = read_reports("file", text);
    EXPECT_EQ(stored.not_reached, 4U);
    EXPECT_EQ(formatted(stored.reports, in("json"), 4), text);
    EXPECT_EQ(formatted(stored.reports, "text"), formatted(reports, "text"));
    const std::string kNoReport = "file: not a report of vrrp-valid check --format json: ";
    const std::pair<std::string, std::string> rows[] = {
        {text.substr(0, text.size() - 3), "file:"},
        {"{}", kNoReport.substr(0, kNoReport.size() - 2)},
        {R"({"format_version": "1.0"})",
         "file: a report of format 1.0; this command reads 2.0: check again with it"},
        {replaced(text, "format_version\": \"2.0", "format_version\": \"2.1"), ""},
        {replaced(text, "\"candidates\": 7", "\"candidates\": 2"),
         "file: its summary does not add"},
        {replaced(text, "\"not_checked\": 5", "\"not_checked\": 4"), "file: its summary does"},
        {replaced(text, "\"requests\": 3", "\"requests\": 4294967296"), kNoReport + "a count is"},
        {replaced(text, "\"requests\": 3", "\"requests\": 3.5"), kNoReport + "a count is"},
        {replaced(text, "\"severity\": \"error\"", "\"severity\": \"none\""),
         kNoReport + "no report has \"none\""},
        {replaced(text, "\"reports\": [", "\"reports\": [null, "), "file: not a report of"},
        {replaced(text, "\"values\": []", "\"values\": [[" + std::string(150000, '[')),
         kNoReport + "more than 1000 levels"}};
    for (const auto& row : rows) {
        const std::string refused = refusal_of([&] { read_reports("file", row.first); });
        EXPECT_THAT(refused, StartsWith(row.second));
        EXPECT_EQ(refused.empty(), row.second.empty()) << refused;
    }
}

/// Every text of it would end a line, an attribute or a string, clear the screen, or is no UTF-8.
Report hostile(bool is_checked) {
    const std::string text =
        "\n::error::]]>\"'<&>,%\t\r\033[2J\x9b\u202e\u2028\xff\xed\xa0\x80\uffff";
    Finding finding = changed_address();
    for (std::string* const part :
         {&finding.path, &finding.cli_path, &finding.message, &finding.note, &finding.help,
          &finding.cause, &finding.location.file}) {
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

TEST(EveryFormat, HoldsWhateverTextsItIsGiven) {
    for (const bool is_checked : {true, false}) {
        const std::vector<Report> reports = {hostile(is_checked)};
        for (const std::string& format : report_formats()) {
            SCOPED_TRACE(format);
            const std::string shown = formatted(reports, format);
            EXPECT_THAT(shown, EndsWith("\n"));
            for (const char* const forged : {"\n::error::]]", "\033", "\x9b", "\u202e", "\u2028",
                                             "\t\r", "\xff", "\xed", "\uffff"}) {
                EXPECT_THAT(shown, Not(HasSubstr(forged)));
            }
            const std::map<std::string, int> lines = {
                {"text", is_checked ? 11 : 2}, {"concise", 1}, {"github", 2}};
            EXPECT_TRUE(lines.count(format) == 0 ||
                        std::count(shown.begin(), shown.end(), '\n') == lines.at(format))
                << shown;
        }
        EXPECT_EQ(against_schema(formatted(reports, "json")), "");
        for (const char* const format : {"junit", "html"}) {
            EXPECT_TRUE(pugi::xml_document().load_string(formatted(reports, format).c_str()));
        }
    }
}

}  // namespace
