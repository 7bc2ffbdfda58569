#include <iomanip>
#include <pugixml.hpp>
#include <sstream>

#include "reports/report_text.h"
#include "reports/spool.h"
#include "text/printable.h"

namespace {

/// The test that every suite has beside those of the rules.
constexpr const char* kReadable = "can be checked";
constexpr const char* kTool = "vrrp-valid";

struct Counts {
    unsigned tests = 0;
    unsigned failures = 0;
    unsigned errors = 0;
    unsigned skipped = 0;

    void add(const Counts& other) {
        tests += other.tests;
        failures += other.failures;
        errors += other.errors;
        skipped += other.skipped;
    }
};

pugi::xml_node add_test(pugi::xml_node suite, const Report& report, const std::string& name) {
    const std::string file = printable(report.candidate);
    pugi::xml_node test = suite.append_child("testcase");
    test.append_attribute("classname") = file.c_str();
    test.append_attribute("name") = printable(name).c_str();
    test.append_attribute("file") = file.c_str();
    return test;
}

void add_text(pugi::xml_node test, const char* element, const std::string& text) {
    test.append_child(element).text() = text.c_str();
}

void add_outcome(pugi::xml_node test, const char* element, const std::string& type,
                 const std::string& message, const std::string& text) {
    pugi::xml_node outcome = test.append_child(element);
    outcome.append_attribute("type") = type.c_str();
    outcome.append_attribute("message") = message.c_str();
    outcome.text() = text.c_str();
}

void set_time(pugi::xml_node element, double seconds) {
    std::ostringstream time;  // never with an exponent
    time << std::fixed << std::setprecision(6) << seconds;
    element.append_attribute("time") = time.str().c_str();
}

/// The rule's test fails with the first finding's message, and tells all of them.
void add_rule(pugi::xml_node suite, const Report& report, const std::string& rule,
              bool accept_warnings, Counts& counts) {
    pugi::xml_node test = add_test(suite, report, rule);
    ++counts.tests;
    const auto taken = report.rule_seconds.find(rule);
    if (taken != report.rule_seconds.end()) {
        set_time(test, taken->second);
    }
    if (!report.failure.empty()) {
        ++counts.skipped;
        test.append_child("skipped");
        return;
    }
    Report of_rule;
    of_rule.candidate = report.candidate;
    for (const Finding& finding : report.findings) {
        if (finding.rule == rule) {
            of_rule.findings.push_back(finding);
        }
    }
    for (const Omitted& rest : report.omitted) {
        if (rest.rule == rule) {
            of_rule.omitted.push_back(rest);
        }
    }
    const auto& findings = of_rule.findings;
    const std::size_t count = of_rule.count(Severity::error) + of_rule.count(Severity::warning);
    if (count == 0) {
        return;
    }
    TextStyle quiet;
    quiet.quiet = true;
    std::string text = "\n" + format_text(of_rule, quiet);
    for (const Omitted& rest : of_rule.omitted) {
        text += omitted_text(rest) + "\n";
    }
    const bool has_errors = of_rule.count(Severity::error) > 0;
    if (!has_errors && accept_warnings) {
        add_text(test, "system-out", text);
        return;
    }
    ++counts.failures;
    const std::string more = count == 1 ? "" : " (and " + std::to_string(count - 1) + " more)";
    const std::string message =
        findings.empty() ? counted(count, "finding") : printable(findings.front().message) + more;
    add_outcome(test, "failure", has_errors ? "error" : "warning", message, text);
}

void set_counts(pugi::xml_node element, const Counts& counts, double seconds) {
    element.append_attribute("tests") = counts.tests;
    element.append_attribute("failures") = counts.failures;
    element.append_attribute("errors") = counts.errors;
    element.append_attribute("skipped") = counts.skipped;
    set_time(element, seconds);
}

Counts add_suite(pugi::xml_document& document, const Report& report, bool accept_warnings) {
    pugi::xml_node suite = document.append_child("testsuite");
    suite.append_attribute("name") = printable(report.candidate).c_str();
    Counts counts;
    pugi::xml_node readable = add_test(suite, report, kReadable);
    ++counts.tests;
    if (!report.failure.empty()) {
        ++counts.errors;
        const std::string reason = printable(report.failure);
        add_outcome(readable, "error", "error", reason, reason);
    }
    for (const std::string& rule : report.rule_names) {
        add_rule(suite, report, rule, accept_warnings, counts);
    }
    std::string said = result_text(report) + "\n";
    for (const std::string& remark : remarks(report)) {
        said += remark + "\n";
    }
    add_text(suite, "system-out", said);
    set_counts(suite, counts, report.seconds);
    return counts;
}

/// Candidates that were not reached have no suite: that the run was ended is an error by itself.
Counts add_interruption(pugi::xml_document& document, std::size_t not_reached) {
    pugi::xml_node suite = document.append_child("testsuite");
    suite.append_attribute("name") = kTool;
    pugi::xml_node test = suite.append_child("testcase");
    test.append_attribute("classname") = kTool;
    test.append_attribute("name") = "every candidate was checked";
    const std::string text = not_reached_text(not_reached);
    add_outcome(test, "error", "interrupted", text, text);
    const Counts counts{1, 0, 1, 0};
    set_counts(suite, counts, 0);
    return counts;
}

/// The suites wait for the counts of all, which go before them.
class JunitWriter final : public ReportWriter {
  public:
    JunitWriter(bool accept_warnings, Write write)
        : accept_warnings_(accept_warnings), write_(std::move(write)) {}

    void add(const Report& report) override {
        pugi::xml_document document;
        counts_.add(add_suite(document, report, accept_warnings_));
        seconds_ += report.seconds;
        suites_.write(text_of(document.first_child(), 1));
    }

    void finish(const Summary& /*summary*/, std::size_t not_reached) override {
        pugi::xml_document document;
        if (not_reached > 0) {
            counts_.add(add_interruption(document, not_reached));
            suites_.write(text_of(document.first_child(), 1));
        }
        pugi::xml_node all = document.append_child("testsuites");
        all.append_attribute("name") = kTool;
        set_counts(all, counts_, seconds_);
        all.text() = "\n";
        const std::string around = text_of(all, 0);
        const std::size_t inside = around.find('\n') + 1;
        write_("<?xml version=\"1.0\"?>\n" + around.substr(0, inside));
        suites_.copy_to(write_);
        write_(around.substr(inside));
    }

  private:
    static std::string text_of(pugi::xml_node element, unsigned depth) {
        std::ostringstream xml;
        element.print(xml, "  ", pugi::format_default, pugi::encoding_utf8, depth);
        return xml.str();
    }

    bool accept_warnings_;
    Write write_;
    Counts counts_;
    double seconds_ = 0;
    Spool suites_;
};

}  // namespace

std::unique_ptr<ReportWriter> junit_writer(const ReportOptions& options, const Write& write) {
    return std::make_unique<JunitWriter>(options.accept_warnings, write);
}
