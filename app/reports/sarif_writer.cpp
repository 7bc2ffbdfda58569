#include <algorithm>
#include <cctype>

#include "reports/fingerprint.h"
#include "reports/json_elements.h"
#include "reports/percent_encoding.h"
#include "reports/report_text.h"
#include "reports/source_lines.h"
#include "reports/spool.h"
#include "text/printable.h"
#include "text/utf8.h"

namespace {

constexpr const char* kHead =
    "{\n  \"$schema\": \"https://json.schemastore.org/sarif-2.1.0.json\",\n"
    "  \"version\": \"2.1.0\",\n  \"runs\": [\n    {\n"
    "      \"columnKind\": \"unicodeCodePoints\",\n      \"results\": ";

/// `file` as a relative or absolute URI reference.
std::string uri_of(const std::string& file) {
    constexpr std::string_view kMarks = "-._~/";
    const std::string path = repository_path(file);
    return (path[0] == '/' ? "file://" : "") + percent_encoded(path, [&](char c) {
               return std::isalnum(static_cast<unsigned char>(c)) != 0 ||
                      kMarks.find(c) != std::string_view::npos;
           });
}

/// The name at `location`; where only the file is known its beginning, since tools need a place.
Json physical_location(const Report& report, const Location& location) {
    Json region = {{"startLine", std::max<std::size_t>(location.line, 1)}};
    if (location.column > 0) {
        region["startColumn"] = location.column;
        if (const SourceText* const source = source_of(report, location)) {
            const Excerpt line = excerpt(*source, location.line, location.column);
            region["endLine"] = location.line;
            region["endColumn"] = location.column + count_characters(line.marked);
        }
    }
    return {{"artifactLocation", {{"uri", uri_of(location.file)}}}, {"region", region}};
}

Json rule_json(const Rule& rule) {
    std::string text = rule.demand;
    std::string markdown = rule.demand + "\n";
    bool is_warning = !rule.messages.empty();
    for (const RuleMessage& message : rule.messages) {
        is_warning = is_warning && message.is_warning;
        text += "\n\n" + message.text + "\n" + message.help;
        markdown += "\n- `" + message.text + "`: " + message.help;
    }
    return {{"id", rule.name},
            {"shortDescription", {{"text", rule.demand.substr(0, rule.demand.find(". ")) + "."}}},
            {"fullDescription", {{"text", rule.demand}}},
            {"help", {{"text", text}, {"markdown", markdown}}},
            {"defaultConfiguration", {{"level", is_warning ? "warning" : "error"}}}};
}

Json result_json(const Report& report, const Finding& finding) {
    std::string message = printable(finding.message);
    for (const auto& [word, text] :
         {std::pair("Cause: ", &finding.cause), std::pair("Note: ", &finding.note),
          std::pair("Help: ", &finding.help)}) {
        message += text->empty() ? "" : "\n" + (word + printable(*text));
    }
    Json json = {{"ruleId", printable(finding.rule)},
                 {"level", severity_word(finding.severity)},
                 {"message", {{"text", message}}}};
    Json place = {{"physicalLocation", physical_location(report, finding.location)}};
    if (!finding.path.empty()) {
        place["logicalLocations"] = {{{"fullyQualifiedName", printable(finding.path)},
                                      {"decoratedName", printable(finding.cli_path)}}};
    }
    json["locations"] = {place};
    const auto relate = [&](const Location& at, const std::string& text) {
        if (at.is_known()) {
            json["relatedLocations"].push_back({{"id", json["relatedLocations"].size() + 1},
                                                {"physicalLocation", physical_location(report, at)},
                                                {"message", {{"text", text}}}});
        }
    };
    relate(finding.node_location, printable(finding.cli_path));
    for (const ReadValue& value : finding.values) {
        relate(value.location, value_text(value));
    }
    json["partialFingerprints"] = {{"finding/v1", fingerprint(report.candidate, finding)}};
    return json;
}

/// The results are written as they come; the notifications, which are beside them in another array,
/// when there are no more.
class SarifWriter final : public ReportWriter {
  public:
    using ReportWriter::ReportWriter;

    void add(const Report& report, const std::vector<Finding>& findings) override {
        rules_ = report.rules != nullptr ? report.rules : rules_;
        last_ = report.candidate;
        for (const Finding& finding : findings) {
            Json result = result_json(report, finding);
            if (finding.severity == Severity::warning && options_.accept_warnings) {
                result["suppressions"] = {
                    {{"kind", "external"}, {"justification", "accepted with --accept-warnings"}}};
            }
            results_.add(result);
        }
        for (const std::string& note : notes(report)) {
            notifications_.add(
                {{"level", "note"},
                 {"message", {{"text", note}}},
                 {"locations", {{{"physicalLocation", physical_location(report, {last_})}}}}});
        }
    }

    void finish(const Summary& summary, std::size_t not_reached) override {
        if (not_reached > 0) {
            results_.add(result_json({}, told(kNotChecked, not_reached_text(not_reached), last_)));
        }
        Json rules = Json::array();
        for (const Rule& rule : *rules_) {
            rules.push_back(rule_json(rule));
        }
        Rule not_checked;
        not_checked.name = kNotChecked;
        not_checked.demand = "Every candidate can be checked.";
        rules.push_back(rule_json(not_checked));
        const Json driver = {{"name", "vrrp-valid"},
                             {"version", VRRP_VALID_VERSION},
                             {"semanticVersion", VRRP_VALID_VERSION},
                             {"rules", rules}};
        results_.finish(",\n      \"tool\": " + indented({{"driver", driver}}, "      ") +
                        ",\n      \"invocations\": [\n        {\n"
                        "          \"executionSuccessful\": " +
                        (summary.not_checked == 0 ? "true" : "false") + ",\n");
        notifications_.finish("\n        }\n      ]\n    }\n  ]\n}\n");
        notifications_text_.copy_to(write_);
    }

  private:
    std::shared_ptr<const std::vector<Rule>> rules_ = std::make_shared<std::vector<Rule>>();
    std::string last_;  ///< whose file is the place of what has none
    JsonElements results_{write_, kHead, 3};
    Spool notifications_text_;
    JsonElements notifications_{
        [this](const std::string& text) { notifications_text_.write(text); },
        "          \"toolExecutionNotifications\": ", 5};
};

}  // namespace

std::unique_ptr<ReportWriter> sarif_writer(const ReportOptions& options, const Write& write) {
    return std::make_unique<SarifWriter>(options, write);
}
