#include <algorithm>
#include <iomanip>
#include <iterator>

#include "reports/report_text.h"
#include "reports/report_writer.h"
#include "reports/xml_elements.h"

namespace {

constexpr const char* kTool = "vrrp-valid";

pugi::xml_node add_suite(pugi::xml_node parent, const std::string& name) {
    pugi::xml_node suite = parent.append_child("testsuite");
    set_attribute(suite, "name", name);
    return suite;
}

/// A test of the class that the suite is named after.
pugi::xml_node add_test(pugi::xml_node suite, const std::string& name) {
    pugi::xml_node test = suite.append_child("testcase");
    test.append_attribute("classname") = suite.attribute("name").value();
    set_attribute(test, "name", name);
    return test;
}

/// The outcome of a test: `of_rule`, the first of them in its message.
void add_findings(pugi::xml_node test, const std::vector<Finding>& of_rule, bool accept_warnings) {
    const Finding& first = of_rule.front();
    std::string text = "\n";
    bool has_error = false;
    for (const Finding& finding : of_rule) {
        text += finding_text(finding);
        has_error = has_error || finding.severity == Severity::error;
    }
    if (!has_error && accept_warnings) {
        test.append_child("system-out").text() = text.c_str();
        return;
    }
    pugi::xml_node outcome = test.append_child(first.rule == kNotChecked ? "error" : "failure");
    outcome.append_attribute("type") = has_error ? "error" : "warning";
    set_attribute(outcome, "message", first.message + (of_rule.size() == 1 ? "" : " (and more)"));
    outcome.text() = text.c_str();
}

/// Writes `suite`, which is complete, with its counts.
void write_suite(pugi::xml_node suite, double seconds, const Write& write) {
    for (const auto& [name, tests] :
         {std::pair("tests", "testcase"), std::pair("failures", "testcase[failure]"),
          std::pair("errors", "testcase[error]"), std::pair("skipped", "testcase[skipped]")}) {
        set_attribute(suite, name, std::to_string(suite.select_nodes(tests).size()));
    }
    std::ostringstream time;  // never with an exponent
    time << std::fixed << std::setprecision(6) << seconds;
    set_attribute(suite, "time", time.str());
    write(xml_of(suite, pugi::format_default));
}

class JunitWriter final : public ReportWriter {
  public:
    JunitWriter(const ReportOptions& options, const Write& write) : ReportWriter(options, write) {
        write_(std::string("<?xml version=\"1.0\"?>\n<testsuites name=\"") + kTool + "\">\n");
    }

    void add(const Report& report, const std::vector<Finding>& findings) override {
        const pugi::xml_document document;
        pugi::xml_node suite = add_suite(document.root(), report.candidate);
        std::vector<std::string> rules = report.rule_names;
        rules.insert(rules.begin(), kNotChecked);
        for (const Finding& finding : findings) {
            if (std::find(rules.begin(), rules.end(), finding.rule) == rules.end()) {
                rules.push_back(finding.rule);
            }
        }
        for (const std::string& rule : rules) {
            pugi::xml_node test = add_test(suite, rule == kNotChecked ? "can be checked" : rule);
            set_attribute(test, "file", report.candidate);
            std::vector<Finding> of_rule;
            std::copy_if(findings.begin(), findings.end(), std::back_inserter(of_rule),
                         [&](const Finding& finding) { return finding.rule == rule; });
            if (!of_rule.empty()) {
                add_findings(test, of_rule, options_.accept_warnings);
            } else if (!report.failure.empty()) {
                test.append_child("skipped");
            }
        }
        std::vector<std::string> said = notes(report);
        said.insert(said.begin(), result_text(report));
        suite.append_child("system-out").text() = (joined(said, "\n") + "\n").c_str();
        write_suite(suite, report.seconds, write_);
    }

    /// Candidates that were not reached have no suite: that the run was ended is an error by
    /// itself.
    void finish(const Summary& /*summary*/, std::size_t not_reached) override {
        if (not_reached > 0) {
            const pugi::xml_document document;
            pugi::xml_node suite = add_suite(document.root(), kTool);
            add_findings(add_test(suite, "every candidate was checked"),
                         {told(kNotChecked, not_reached_text(not_reached), kTool)}, false);
            write_suite(suite, 0, write_);
        }
        write_("</testsuites>\n");
    }
};

}  // namespace

std::unique_ptr<ReportWriter> junit_writer(const ReportOptions& options, const Write& write) {
    return std::make_unique<JunitWriter>(options, write);
}
