#include "reports/report_text.h"

#include "text/printable.h"

namespace {

std::string listed(const std::vector<std::string>& texts) {
    std::string list;
    for (const std::string& text : texts) {
        list += (list.empty() ? "" : ", ") + text;
    }
    return printable(list);
}

std::string counts(std::size_t errors, std::size_t warnings, std::size_t checks) {
    return counted(errors, "error") + ", " + counted(warnings, "warning") + " in " +
           counted(checks, "check");
}

}  // namespace

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
    std::vector<std::string> lines = {"at " + printable(finding.cli_path)};
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
    lines.push_back("see: vrrp-valid explain " + printable(finding.rule));
    return lines;
}

std::string omitted_text(const Omitted& omitted) {
    const std::string errors = counted(omitted.errors, "more error");
    const std::string warnings = counted(omitted.warnings, "more warning");
    return (omitted.warnings == 0 ? errors
            : omitted.errors == 0 ? warnings
                                  : errors + " and " + warnings) +
           " of " + printable(omitted.rule) + "; check with a larger --max-findings to see them";
}

bool is_clean(const Report& report) {
    return report.failure.empty() && report.findings.empty() && report.omitted.empty() &&
           (!report.changes || report.changes->empty()) && report.requests > 0 &&
           report.removed_instances == 0 && report.unknown_data.unknown.empty();
}

std::string result_text(const Report& report) {
    if (!report.failure.empty()) {
        return "could not be checked";
    }
    const std::string running =
        report.running.empty() ? "an empty running configuration" : printable(report.running);
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
                            listed(data.modules));
    }
    for (const std::string& node : data.unknown) {
        sentences.push_back("not defined in its module, not " + done + ": " + printable(node));
    }
    return sentences;
}

std::vector<std::string> remarks(const Report& report) {
    std::vector<std::string> sentences;
    for (const Omitted& rest : report.omitted) {
        sentences.push_back(omitted_text(rest));
    }
    const std::vector<std::string> more = notes(report);
    sentences.insert(sentences.end(), more.begin(), more.end());
    return sentences;
}

std::string not_reached_text(std::size_t count) {
    return "interrupted: " + counted(count, "candidate") +
           (count == 1 ? " was not checked" : " were not checked");
}

std::string summary_text(const Summary& summary) {
    std::string text = counted(summary.candidates, "candidate") + ": " +
                       counts(summary.errors, summary.warnings, summary.requests);
    if (summary.not_checked > 0) {
        text += ", " + std::to_string(summary.not_checked) + " not checked";
    }
    if (summary.unknown_nodes > 0) {
        text += ", " + counted(summary.unknown_nodes, "node") + " of other modules not checked";
    }
    for (const std::string& note : summary.notes) {
        text += ", " + note;
    }
    return text;
}
