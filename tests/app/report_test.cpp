// Reports as they are read.
#include <gmock/gmock.h>

#include "commands/exit_code.h"
#include "reports/report_format.h"
#include "terminal/output.h"

using testing::HasSubstr;

namespace {

Report one(const std::string& candidate, std::vector<Finding> findings, std::string failure = {}) {
    Report report;
    report.candidate = candidate;
    report.selectors = {"first", "second"};
    report.requests = 3;
    report.findings = std::move(findings);
    report.failure = std::move(failure);
    return report;
}

const Finding kError = {
    Severity::error, "first", "/a{<\"&>}", "a <\"&>", "no <good> & \"bad\"", {}, {}, {}, {}};
const Finding kWarning = {Severity::warning,
                          "first",
                          "/a{b}",
                          "a b",
                          "take care",
                          {{"running", "/c", "c", "1", {}}},
                          {},
                          {},
                          {}};
const Report kBoth = one("both", {kError, kWarning});
const Report kWarned = one("warned", {kWarning});
const Report kClean = one("clean", {});
const Report kBroken = one("broken", {}, "broken: cannot be opened");

TEST(Reports, TakeTheWorstExitCode) {
    const std::vector<std::pair<std::vector<Report>, int>> rows = {
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

TEST(Reports, SumUpSeveralCandidatesAsText) {
    const std::string text = format_text({kBoth, kBroken, kWarned}, false);
    for (const char* const part :
         {"error: a <\"&>\n    no <good> & \"bad\"\n    at /a{<\"&>} (first)\n",
          "warning: a b\n    take care\n    running: c 1\n    at /a{b} (first)\n",
          "both: 1 error, 1 warning in 3 requests, checked against an empty running "
          "configuration\n",
          "broken: not checked\n"}) {
        EXPECT_THAT(text, HasSubstr(part));
    }
    EXPECT_THAT(text, testing::EndsWith("3 candidates: 1 error, 2 warnings in 9 requests\n"));
    EXPECT_THAT(format_text({kClean}, true), testing::Not(HasSubstr("candidates")));
}

TEST(Reports, AreAnArrayOfObjectsInJson) {
    EXPECT_THAT(format_json({kClean, kBroken}), testing::MatchesRegex("\\[.*\\]\n"));
    EXPECT_THAT(format_json({kBroken, kClean}),
                HasSubstr("\"error\": \"broken: cannot be opened\""));
    EXPECT_THAT(format_json({kWarned}), HasSubstr("\"valid\": true"));
    EXPECT_THAT(format_json({one("no\xff utf-8", {})}), HasSubstr("no\xef\xbf\xbd utf-8"));
}

TEST(Reports, HaveAFailedTestForEachFindingInJUnit) {
    const std::string xml = format_junit({kBoth, kBroken});
    for (
        const char* const part :
        {R"(<testsuite name="both" tests="3" failures="2" errors="0">)",
         R"(name="first /a{&lt;&quot;&amp;>}"><failure type="error" message="no &lt;good> &amp; &quot;bad&quot;"/>)",
         R"(<failure type="warning" message="take care"/>)", R"(name="second"/>)",
         R"(<testsuite name="broken" tests="1" failures="0" errors="1">)",
         R"(<error message="broken: cannot be opened"/>)"}) {
        EXPECT_THAT(xml, HasSubstr(part));
    }
}

TEST(Printable, ShowsWhatWouldForgeALineOrCommandTheTerminal) {
    const std::vector<std::pair<std::string, std::string>> rows = {
        {"plain ä € 𝄞", "plain ä € 𝄞"},
        {"a\nb\033[2J\x7f", "a\\x0ab\\x1b[2J\\x7f"},
        {"\xc2\x9b\xc2\xa0", "\\x9b\xc2\xa0"},
        {"\xff\xc3", "\\xff\\xc3"},
        {"\xc0\x80\xe2\x82", "\\xc0\\x80\\xe2\\x82"},
        {std::string("\0", 1), "\\x00"},
    };
    for (const auto& [text, shown] : rows) {
        EXPECT_EQ(printable(text), shown);
    }
    EXPECT_EQ(complaint("a\nb"), "vrrp-valid: a\\x0ab\n");
}

}  // namespace
