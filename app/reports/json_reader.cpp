#include "reports/json_reader.h"

#include <algorithm>

#include "configuration/source_text.h"
#include "errors/input_error.h"
#include "reports/json.h"

namespace {

std::string text_at(const Json& json, const char* member) {
    const auto found = json.find(member);
    return found == json.end() || found->is_null() ? std::string() : found->get<std::string>();
}

std::vector<std::string> texts_at(const Json& json, const char* member) {
    return json.at(member).get<std::vector<std::string>>();
}

Location location_at(const Json& json, const char* member) {
    const auto found = json.find(member);
    if (found == json.end() || found->is_null()) {
        return {};
    }
    const Json& column = found->at("column");
    return {found->at("file").get<std::string>(), found->at("line").get<std::size_t>(),
            column.is_null() ? 0 : column.get<std::size_t>()};
}

ReadValue read_value(const Json& json) {
    const bool is_running = json.at("datastore").get<std::string>() == "running";
    return {is_running ? "running" : "candidate", text_at(json, "path"), text_at(json, "cli_path"),
            text_at(json, "value"), location_at(json, "location")};
}

Finding read_finding(const Json& json) {
    Finding finding;
    finding.severity =
        json.at("severity").get<std::string>() == "error" ? Severity::error : Severity::warning;
    finding.rule = json.at("rule").get<std::string>();
    finding.path = json.at("path").get<std::string>();
    finding.cli_path = json.at("cli_path").get<std::string>();
    finding.message = json.at("message").get<std::string>();
    for (const Json& value : json.at("values")) {
        finding.values.push_back(read_value(value));
    }
    finding.note = text_at(json, "note");
    finding.help = text_at(json, "help");
    finding.location = location_at(json, "location");
    finding.cause = text_at(json, "cause");
    return finding;
}

/// "l3-vlan10 ipv4 5"; the interface's name may hold blanks.
VrrpInstance read_instance(const std::string& words) {
    const std::size_t id = words.rfind(' ');
    const std::size_t family = id == 0 ? std::string::npos : words.rfind(' ', id - 1);
    if (id == std::string::npos || family == std::string::npos) {
        return {words, {}, {}};
    }
    return {words.substr(0, family), words.substr(family + 1, id - family - 1),
            words.substr(id + 1)};
}

Report read_report(const Json& json) {
    Report report;
    report.candidate = json.at("candidate").get<std::string>();
    report.running = text_at(json, "running");
    report.rule_names = texts_at(json, "rules");
    report.requests = json.at("requests").get<std::size_t>();
    for (const std::string& instance : texts_at(json, "instances")) {
        report.instances.push_back(read_instance(instance));
    }
    report.removed_instances = json.at("removed_instances").get<std::size_t>();
    const Json& skipped = json.at("skipped");
    report.unknown_data = {skipped.at("nodes").get<std::size_t>(), texts_at(skipped, "modules"),
                           texts_at(skipped, "unknown")};
    if (json.contains("changes")) {
        report.changes.emplace();
        for (const Json& change : json["changes"]) {
            report.changes->push_back(change_from_json(change));
        }
    }
    for (const Json& finding : json.at("findings")) {
        report.findings.push_back(read_finding(finding));
    }
    for (const Json& rest : json.value("omitted", Json::array())) {
        report.omitted.push_back({text_at(rest, "rule"), rest.at("errors").get<std::size_t>(),
                                  rest.at("warnings").get<std::size_t>()});
    }
    report.failure = text_at(json, "error");
    report.failure_at = location_at(json, "error_location");
    return report;
}

}  // namespace

StoredReports reports_from_json(const std::string& name, const std::string& text) {
    try {
        const Json json = Json::parse(text);
        StoredReports stored;
        if (json.at("format_version").get<std::string>().rfind("1.", 0) != 0) {
            throw InputError(name + ": a report of another version; this command reads 1.x");
        }
        for (const Json& report : json.at("reports")) {
            stored.reports.push_back(read_report(report));
        }
        const auto candidates = json.at("summary").at("candidates").get<std::size_t>();
        if (candidates < stored.reports.size()) {
            throw InputError(name + ": has more reports than its summary counts");
        }
        stored.not_reached = candidates - stored.reports.size();
        return stored;
    } catch (const Json::parse_error& error) {
        throw InputError(SourceText(name, text).location(std::min(error.byte, text.size())),
                         "not a complete report of vrrp-valid check --format json: the JSON ends "
                         "early or is broken here; run that check again");
    } catch (const Json::exception&) {
        throw InputError(name + ": not a report of vrrp-valid check --format json");
    }
}
