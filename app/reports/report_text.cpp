#include "reports/report_text.h"

#include <map>
#include <set>

#include "text/printable.h"

namespace {

std::string counts(std::size_t errors, std::size_t warnings, std::size_t checks) {
    return counted(errors, "error") + ", " + counted(warnings, "warning") + " in " +
           counted(checks, "check");
}

std::string omitted_text(const Omitted& omitted) {
    const std::string errors = counted(omitted.errors, "more error");
    const std::string warnings = counted(omitted.warnings, "more warning");
    return (omitted.warnings == 0 ? errors
            : omitted.errors == 0 ? warnings
                                  : errors + " and " + warnings) +
           " of " + omitted.rule + "; check with a larger --max-findings to see them";
}

/// `place`, or the candidate's file when that is not known.
Location place_in(const Report& report, const Location& place) {
    return place.is_known() ? place : Location{report.candidate};
}

}  // namespace

std::string joined(const std::vector<std::string>& texts, const char* separator) {
    std::string all;
    for (const std::string& text : texts) {
        all += (&text == texts.data() ? "" : separator) + text;
    }
    return all;
}

std::string coloured(const std::string& text, const std::string& colour) {
    return colour.empty() ? text : colour + text + "\033[0m";
}

std::string severity_word(Severity severity) {
    return severity == Severity::error ? "error" : "warning";
}

std::string counted(std::size_t count, const std::string& noun) {
    return std::to_string(count) + " " + noun + (count == 1 ? "" : "s");
}

std::string value_text(const ReadValue& value) {
    return printable(value.datastore + std::string(": ") + value.cli_path + " " + value.value);
}

std::vector<std::string> finding_lines(const Finding& finding) {
    std::vector<std::string> lines;
    if (!finding.cli_path.empty()) {
        const std::string place = text_of(finding.node_location);
        const bool is_other = !place.empty() && place != text_of(finding.location);
        lines.push_back("at " + printable(finding.cli_path + (is_other ? " (" + place + ")" : "")));
    }
    for (const ReadValue& value : finding.values) {
        const std::string place = printable(text_of(value.location));
        lines.push_back(value_text(value) + (place.empty() ? "" : " (" + place + ")"));
    }
    if (!finding.note.empty()) {
        lines.push_back("note: " + printable(finding.note));
    }
    if (!finding.help.empty()) {
        lines.push_back("help: " + printable(finding.help));
    }
    if (!finding.path.empty()) {
        lines.push_back("see: vrrp-valid explain " + printable(finding.rule));
    }
    return lines;
}

std::string finding_text(const Finding& finding, const std::string& colour,
                         const std::string& source) {
    std::string text = printable(text_of(finding.location)) + ": " +
                       coloured(severity_word(finding.severity) + ":", colour) + " " +
                       printable(finding.message) + "\n" + source;
    for (const std::string& line : finding_lines(finding)) {
        text += "    " + line + "\n";
    }
    return text;
}

Finding told(const std::string& rule, const std::string& message, const std::string& candidate) {
    Finding finding;
    finding.rule = rule;
    finding.message = message;
    finding.location.file = candidate;
    return finding;
}

std::vector<Finding> told_findings(const Report& report) {
    std::vector<Finding> findings;
    if (!report.failure.empty()) {
        findings.push_back(told(kNotChecked, report.failure, report.candidate));
        findings[0].location = place_in(report, report.failure_at);
        const std::string place = text_of(findings[0].location) + ": ";
        findings[0].message.erase(0, report.failure.rfind(place, 0) == 0 ? place.size() : 0);
    }
    std::map<std::string, const Finding*> firsts;  // of each cause
    std::set<std::pair<const Finding*, const Finding*>> order;
    for (const Finding& finding : report.findings) {
        const auto first = firsts.emplace(finding.cause, &finding).first;
        order.emplace(finding.cause.empty() ? &finding : first->second, &finding);
    }
    for (const auto& [first, finding] : order) {
        findings.push_back(*finding);
        findings.back().location = place_in(report, finding->location);
    }
    for (const Omitted& rest : report.omitted) {
        findings.push_back(told(rest.rule, omitted_text(rest), report.candidate));
        findings.back().severity = rest.errors > 0 ? Severity::error : Severity::warning;
    }
    return findings;
}

bool is_clean(const Report& report) {
    return outcome_of(report) == Outcome::clean && report.requests > 0 &&
           report.removed_instances == 0 && report.unknown_data.unknown.empty();
}

std::string result_text(const Report& report) {
    if (!report.failure.empty()) {
        return "could not be checked";
    }
    const std::string running =
        report.running.empty()
            ? "an empty running configuration; the rules that compare cannot refuse"
            : printable(report.running);
    return counts(report.count(Severity::error), report.count(Severity::warning), report.requests) +
           " against " + running;
}

std::vector<std::string> notes(const Report& report) {
    std::vector<std::string> sentences;
    if (!report.failure.empty()) {
        return sentences;
    }
    if (report.requests == 0) {
        sentences.emplace_back(report.instances.empty() ? "no VRRP instances: no rule ran"
                                                        : "no rule ran");
    }
    if (report.removed_instances > 0) {
        sentences.push_back("removes " + counted(report.removed_instances, "VRRP instance"));
    }
    const std::vector<std::string> unknown = unknown_data_texts(report.unknown_data, "checked");
    sentences.insert(sentences.end(), unknown.begin(), unknown.end());
    return sentences;
}

std::vector<std::string> unknown_data_texts(const UnknownData& data, const std::string& done) {
    std::vector<std::string> sentences;
    if (data.nodes > 0) {
        sentences.push_back(counted(data.nodes, "node") + " of other modules not " + done + ": " +
                            printable(joined(data.modules, ", ")));
    }
    for (const std::string& node : data.unknown) {
        sentences.push_back("not defined in its module, not " + done + ": " + printable(node));
    }
    return sentences;
}

std::string not_reached_text(std::size_t count) {
    return "interrupted: " + counted(count, "candidate") +
           (count == 1 ? " was not checked" : " were not checked");
}

std::vector<std::string> summary_lines(const Summary& summary) {
    std::string text = counted(summary.candidates, "candidate") + ": " +
                       counts(summary.errors, summary.warnings, summary.requests);
    for (const auto& [count, word] :
         {std::pair(summary.refused, "refused"), std::pair(summary.warned, "warned"),
          std::pair(summary.clean, "clean"), std::pair(summary.not_checked, "not checked")}) {
        text += count == 0 ? "" : ", " + std::to_string(count) + " " + word;
    }
    if (summary.unknown_nodes > 0) {
        text += ", " + counted(summary.unknown_nodes, "node") + " of other modules not checked";
    }
    for (const std::string& note : summary.notes) {
        text += ", " + note;
    }
    std::vector<std::string> lines = {text};
    for (const auto& [rule, count] : summary.findings_by_rule) {
        lines.push_back(printable(rule) + ": " + counted(count, "finding"));
    }
    return lines;
}
