#include <algorithm>

#include "reports/report_format.h"
#include "terminal/output.h"

namespace {

/// `text` as an attribute's value.
std::string attribute(const char* name, const std::string& text) {
    std::string escaped;
    for (const char c : printable(text)) {
        switch (c) {
            case '&':
                escaped += "&amp;";
                break;
            case '<':
                escaped += "&lt;";
                break;
            case '"':
                escaped += "&quot;";
                break;
            default:
                escaped += c;
        }
    }
    return std::string(" ") + name + "=\"" + escaped + "\"";
}

std::string test_case(const std::string& suite, const std::string& name,
                      const std::string& outcome) {
    const std::string start =
        "    <testcase" + attribute("classname", suite) + attribute("name", name);
    return outcome.empty() ? start + "/>\n" : start + ">" + outcome + "</testcase>\n";
}

std::string failed_test(const Report& report, const Finding& finding) {
    const char* const type = finding.severity == Severity::error ? "error" : "warning";
    return test_case(
        report.candidate, finding.selector + " " + finding.path,
        "<failure" + attribute("type", type) + attribute("message", finding.message) + "/>");
}

/// The suite's tests, one a line.
std::string tests_of(const Report& report) {
    if (!report.failure.empty()) {
        return test_case(report.candidate, "checked",
                         "<error" + attribute("message", report.failure) + "/>");
    }
    std::string tests;
    for (const std::string& selector : report.selectors) {
        const std::size_t before = tests.size();
        for (const Finding& finding : report.findings) {
            if (finding.selector == selector) {
                tests += failed_test(report, finding);
            }
        }
        if (tests.size() == before) {
            tests += test_case(report.candidate, selector, {});
        }
    }
    return tests;
}

}  // namespace

std::string format_junit(const std::vector<Report>& reports) {
    std::string xml = "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n<testsuites>\n";
    for (const Report& report : reports) {
        const std::string tests = tests_of(report);
        xml += "  <testsuite" + attribute("name", report.candidate) +
               attribute("tests", std::to_string(std::count(tests.begin(), tests.end(), '\n'))) +
               attribute("failures", std::to_string(report.findings.size())) +
               attribute("errors", report.failure.empty() ? "0" : "1") + ">\n";
        xml += tests + "  </testsuite>\n";
    }
    return xml + "</testsuites>\n";
}
