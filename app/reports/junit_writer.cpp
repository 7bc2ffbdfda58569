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

/// `text` has lines, each of them printable.
void add_outcome(pugi::xml_node test, const char* element, const char* type,
                 const std::string& message, const std::string& text) {
    pugi::xml_node outcome = test.append_child(element);
    outcome.append_attribute("type") = type;
    set_attribute(outcome, "message", message);
    outcome.text() = text.c_str();
}

void set_time(pugi::xml_node element, double seconds) {
    std::ostringstream time;  // never with an exponent
    time << std::fixed << std::setprecision(6) << seconds;
    set_attribute(element, "time", time.str());
}

/// What of `report` is of `rule`.
Report part_of(const Report& report, const std::string& rule) {
    Report part;
    part.candidate = report.candidate;
    const auto is_of_rule = [&](const auto& one) { return one.rule == rule; };
    std::copy_if(report.findings.begin(), report.findings.end(), std::back_inserter(part.findings),
                 is_of_rule);
    std::copy_if(report.omitted.begin(), report.omitted.end(), std::back_inserter(part.omitted),
                 is_of_rule);
    return part;
}

/// Of the test of a rule: it fails with the first finding's message, and tells all of them.
void add_findings(pugi::xml_node test, const Report& of_rule, bool accept_warnings) {
    const std::size_t errors = of_rule.count(Severity::error);
    const std::size_t count = errors + of_rule.count(Severity::warning);
    if (count == 0) {
        return;
    }
    TextStyle findings_only;
    findings_only.quiet = true;
    std::string text = "\n" + format_text(of_rule, findings_only);
    for (const Omitted& rest : of_rule.omitted) {
        text += omitted_text(rest) + "\n";
    }
    if (errors == 0 && accept_warnings) {
        test.append_child("system-out").text() = text.c_str();
        return;
    }
    const auto& findings = of_rule.findings;
    const std::string more = count == 1 ? "" : " (and " + std::to_string(count - 1) + " more)";
    add_outcome(test, "failure", errors > 0 ? "error" : "warning",
                findings.empty() ? counted(count, "finding") : findings.front().message + more,
                text);
}

/// Writes `suite`, which is complete, with its counts.
void write_suite(pugi::xml_node suite, double seconds, const Write& write) {
    for (const auto& [name, tests] :
         {std::pair("tests", "testcase"), std::pair("failures", "testcase[failure]"),
          std::pair("errors", "testcase[error]"), std::pair("skipped", "testcase[skipped]")}) {
        set_attribute(suite, name, std::to_string(suite.select_nodes(tests).size()));
    }
    set_time(suite, seconds);
    write(xml_of(suite, pugi::format_default));
}

class JunitWriter final : public ReportWriter {
  public:
    JunitWriter(bool accept_warnings, Write write)
        : accept_warnings_(accept_warnings), write_(std::move(write)) {
        write_(std::string("<?xml version=\"1.0\"?>\n<testsuites name=\"") + kTool + "\">\n");
    }

    void add(const Report& report) override {
        const pugi::xml_document document;
        pugi::xml_node suite = add_suite(document.root(), report.candidate);
        const std::string& failure = report.failure;
        pugi::xml_node readable = add_test(suite, "can be checked");
        if (!failure.empty()) {
            add_outcome(readable, "error", "error", failure, printable(failure));
        }
        for (const std::string& rule : report.rule_names) {
            pugi::xml_node test = add_test(suite, rule);
            const auto taken = report.rule_seconds.find(rule);
            if (taken != report.rule_seconds.end()) {
                set_time(test, taken->second);
            }
            if (failure.empty()) {
                add_findings(test, part_of(report, rule), accept_warnings_);
            } else {
                test.append_child("skipped");
            }
        }
        for (pugi::xml_node test : suite.children()) {
            set_attribute(test, "file", report.candidate);
        }
        std::string said = result_text(report) + "\n";
        for (const std::string& remark : remarks(report)) {
            said += remark + "\n";
        }
        suite.append_child("system-out").text() = said.c_str();
        write_suite(suite, report.seconds, write_);
    }

    /// Candidates that were not reached have no suite: that the run was ended is an error by
    /// itself.
    void finish(const Summary& /*summary*/, std::size_t not_reached) override {
        if (not_reached > 0) {
            const pugi::xml_document document;
            pugi::xml_node suite = add_suite(document.root(), kTool);
            const std::string text = not_reached_text(not_reached);
            add_outcome(add_test(suite, "every candidate was checked"), "error", "interrupted",
                        text, text);
            write_suite(suite, 0, write_);
        }
        write_("</testsuites>\n");
    }

  private:
    bool accept_warnings_;
    Write write_;
};

}  // namespace

std::unique_ptr<ReportWriter> junit_writer(const ReportOptions& options, const Write& write) {
    return std::make_unique<JunitWriter>(options.accept_warnings, write);
}
