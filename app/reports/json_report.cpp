#include "reports/json_elements.h"
#include "reports/report_text.h"
#include "text/printable.h"

namespace {

Json text_or_null(const std::string& text) {
    return text.empty() ? Json() : Json(printable(text));
}

Json to_json(const std::vector<std::string>& texts) {
    Json json = Json::array();
    for (const std::string& text : texts) {
        json.push_back(printable(text));
    }
    return json;
}

Json to_json(const Location& location) {
    if (!location.is_known()) {
        return {};
    }
    return {{"file", printable(location.file)},
            {"line", location.line},
            {"column", location.column == 0 ? Json() : Json(location.column)}};
}

Json to_json(const ReadValue& value) {
    return {{"datastore", value.datastore},
            {"path", printable(value.path)},
            {"cli_path", printable(value.cli_path)},
            {"value", printable(value.value)},
            {"location", to_json(value.location)}};
}

Json to_json(const Finding& finding) {
    Json values = Json::array();
    for (const ReadValue& value : finding.values) {
        values.push_back(to_json(value));
    }
    Json json = {{"severity", severity_word(finding.severity)},
                 {"rule", printable(finding.rule)},
                 {"path", printable(finding.path)},
                 {"cli_path", printable(finding.cli_path)},
                 {"message", printable(finding.message)},
                 {"help", text_or_null(finding.help)},
                 {"location", to_json(finding.location)},
                 {"values", values}};
    if (!finding.cause.empty()) {
        json["cause"] = printable(finding.cause);
    }
    if (!finding.note.empty()) {
        json["note"] = printable(finding.note);
    }
    return json;
}

Json to_json(const Report& report) {
    const bool is_checked = report.failure.empty();
    Json findings = Json::array();
    for (const Finding& finding : report.findings) {
        findings.push_back(to_json(finding));
    }
    Json json = {{"candidate", printable(report.candidate)},
                 {"running", text_or_null(report.running)},
                 {"valid", is_checked && report.count(Severity::error) == 0}};
    json["rules"] = to_json(report.rule_names);
    json["requests"] = report.requests;
    json["instances"] = Json::array();
    for (const VrrpInstance& instance : report.instances) {
        json["instances"].push_back(
            printable(instance.interface + " " + instance.family + " " + instance.id));
    }
    json["removed_instances"] = report.removed_instances;
    json["skipped"] = {{"nodes", report.unknown_data.nodes},
                       {"modules", to_json(report.unknown_data.modules)},
                       {"unknown", to_json(report.unknown_data.unknown)}};
    if (report.changes) {
        json["changes"] = Json::array();
        for (const Change& change : *report.changes) {
            json["changes"].push_back(to_json(change));
        }
    }
    json["findings"] = findings;
    if (!report.omitted.empty()) {
        json["omitted"] = Json::array();
        for (const Omitted& rest : report.omitted) {
            json["omitted"].push_back({{"rule", printable(rest.rule)},
                                       {"errors", rest.errors},
                                       {"warnings", rest.warnings}});
        }
    }
    if (!is_checked) {
        json["error"] = printable(report.failure);
        json["error_location"] = to_json(report.failure_at);
    }
    return json;
}

class JsonWriter final : public ReportWriter {
  public:
    explicit JsonWriter(const Write& write)
        : reports_(write, "{\n  \"format_version\": \"1.0\",\n  \"reports\": ", 1) {}

    void add(const Report& report) override { reports_.add(to_json(report)); }

    void finish(const Summary& summary, std::size_t /*not_reached*/) override {
        const Json counts = {{"candidates", summary.candidates},
                             {"errors", summary.errors},
                             {"warnings", summary.warnings},
                             {"not_checked", summary.not_checked},
                             {"skipped", summary.skipped}};
        reports_.finish(",\n  \"summary\": " + indented(counts, "  ") + "\n}\n");
    }

  private:
    JsonElements reports_;
};

}  // namespace

std::unique_ptr<ReportWriter> json_writer(const ReportOptions& /*options*/, const Write& write) {
    return std::make_unique<JsonWriter>(write);
}
