#include <algorithm>
#include <map>

#include "reports/fingerprint.h"
#include "reports/json_elements.h"
#include "reports/percent_encoding.h"
#include "reports/report_text.h"
#include "reports/source_lines.h"
#include "reports/spool.h"
#include "text/printable.h"
#include "text/utf8.h"

namespace {

constexpr const char* kSchema = "https://json.schemastore.org/sarif-2.1.0.json";

/// `file` as a relative or absolute URI reference.
std::string uri_of(const std::string& file) {
    constexpr std::string_view kMarks = "-._~/";
    const std::string path = repository_path(file);
    return (path[0] == '/' ? "file://" : "") + percent_encoded(path, [&](char c) {
               return std::isalnum(static_cast<unsigned char>(c)) != 0 ||
                      kMarks.find(c) != std::string_view::npos;
           });
}

/// The name at `location`; without a location the beginning of the file, since tools need a place.
Json region_of(const SourceLines& lines, const Location& location) {
    if (!location.is_known() || location.column == 0) {
        return {{"startLine", std::max<std::size_t>(location.line, 1)}};
    }
    Json region = {{"startLine", location.line}, {"startColumn", location.column}};
    const auto excerpt = lines.excerpt(location);
    if (excerpt) {
        region["endLine"] = location.line;
        region["endColumn"] = location.column + count_characters(excerpt->marked);
    }
    return region;
}

Json physical_location(const std::string& file, const SourceLines& lines,
                       const Location& location) {
    const std::string& name = location.is_known() ? location.file : file;
    return {{"artifactLocation", {{"uri", uri_of(name)}}}, {"region", region_of(lines, location)}};
}

Json to_rule(const Rule& use) {
    std::string text = use.demand;
    std::string markdown = use.demand + "\n";
    bool is_warning = true;
    for (const RuleMessage& message : use.messages) {
        is_warning = is_warning && message.is_warning;
        text += "\n\n" + message.text + "\n" + message.help;
        markdown += "\n- `" + message.text + "`: " + message.help;
    }
    return {{"id", use.name},
            {"shortDescription", {{"text", use.demand.substr(0, use.demand.find(". ")) + "."}}},
            {"fullDescription", {{"text", use.demand}}},
            {"help", {{"text", text}, {"markdown", markdown}}},
            {"defaultConfiguration", {{"level", is_warning ? "warning" : "error"}}}};
}

/// The rules of all reports, each once, and the index of each.
struct Rules {
    Json json = Json::array();
    std::map<std::string, std::size_t> index;

    void add(const Report& report) {
        if (report.rules == nullptr) {
            return;
        }
        for (const Rule& use : *report.rules) {
            if (index.emplace(use.name, json.size()).second) {
                json.push_back(to_rule(use));
            }
        }
    }
};

std::string message_of(const Finding& finding) {
    std::string message = printable(finding.message);
    for (const auto& [word, text] :
         {std::pair("Cause: ", &finding.cause), std::pair("Note: ", &finding.note),
          std::pair("Help: ", &finding.help)}) {
        if (!text->empty()) {
            message += "\n" + (word + printable(*text));
        }
    }
    return message;
}

Json to_result(const Report& report, const Finding& finding, const SourceLines& lines,
               const Rules& rules) {
    Json json = {{"ruleId", printable(finding.rule)}};
    const auto rule = rules.index.find(finding.rule);
    if (rule != rules.index.end()) {
        json["ruleIndex"] = rule->second;
    }
    json["level"] = severity_word(finding.severity);
    json["message"] = {{"text", message_of(finding)}};
    json["locations"] = {
        {{"physicalLocation", physical_location(report.candidate, lines, finding.location)},
         {"logicalLocations",
          {{{"fullyQualifiedName", printable(finding.path)},
            {"decoratedName", printable(finding.cli_path)}}}}}};
    Json related = Json::array();
    for (const ReadValue& value : finding.values) {
        if (value.location.is_known()) {
            related.push_back({{"id", related.size() + 1},
                               {"physicalLocation", physical_location({}, lines, value.location)},
                               {"message", {{"text", value_text(value)}}}});
        }
    }
    if (!related.empty()) {
        json["relatedLocations"] = related;
    }
    json["partialFingerprints"] = {{"finding/v1", fingerprint(report, finding)}};
    return json;
}

Json to_notification(const Report& report, const char* level, const std::string& text) {
    return {{"level", level},
            {"message", {{"text", text}}},
            {"locations",
             {{{"physicalLocation",
                physical_location(report.candidate, SourceLines({}), report.failure_at)}}}}};
}

/// The results are written as they come; the notifications, which are beside them in another array,
/// when there are no more.
class SarifWriter final : public ReportWriter {
  public:
    SarifWriter(bool accept_warnings, const Write& write)
        : accept_warnings_(accept_warnings),
          write_(write),
          results_(write,
                   std::string("{\n  \"$schema\": \"") + kSchema +
                       "\",\n  \"version\": \"2.1.0\",\n  \"runs\": [\n    {\n"
                       "      \"columnKind\": \"unicodeCodePoints\",\n      \"results\": ",
                   3) {}

    void add(const Report& report) override {
        rules_.add(report);
        const SourceLines lines(report.sources);
        if (!report.failure.empty()) {
            notifications_.add(to_notification(report, "error", printable(report.failure)));
        }
        for (const std::string& remark : remarks(report)) {
            notifications_.add(to_notification(report, "note", remark));
        }
        for (const Finding& finding : report.findings) {
            Json result = to_result(report, finding, lines, rules_);
            if (finding.severity == Severity::warning && accept_warnings_) {
                result["suppressions"] = {
                    {{"kind", "external"},
                     {"justification", "accepted with --accept-warnings or --max-warnings"}}};
            }
            results_.add(result);
        }
    }

    void finish(const Summary& summary, std::size_t not_reached) override {
        if (not_reached > 0) {
            notifications_.add(
                {{"level", "error"}, {"message", {{"text", not_reached_text(not_reached)}}}});
        }
        const Json tool = {{"driver",
                            {{"name", "vrrp-valid"},
                             {"version", VRRP_VALID_VERSION},
                             {"semanticVersion", VRRP_VALID_VERSION},
                             {"rules", rules_.json}}}};
        results_.finish(",\n      \"tool\": " + indented(tool, "      ") +
                        ",\n      \"invocations\": [\n        {\n"
                        "          \"executionSuccessful\": " +
                        (summary.not_checked == 0 ? "true" : "false") + ",\n");
        notifications_.finish("\n        }\n      ]\n    }\n  ]\n}\n");
        notifications_text_.copy_to(write_);
    }

  private:
    bool accept_warnings_;
    Write write_;
    Rules rules_;
    JsonElements results_;
    Spool notifications_text_;
    JsonElements notifications_{
        [this](const std::string& text) { notifications_text_.write(text); },
        "          \"toolExecutionNotifications\": ", 5};
};

}  // namespace

std::unique_ptr<ReportWriter> sarif_writer(const ReportOptions& options, const Write& write) {
    return std::make_unique<SarifWriter>(options.accept_warnings, write);
}
