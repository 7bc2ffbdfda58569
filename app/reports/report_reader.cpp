#include "reports/report_reader.h"

#include <algorithm>

#include "errors/input_error.h"
#include "reports/report_json.h"

StoredReports read_reports(const std::string& name, const std::string& text) {
    try {
        const Json json = Json::parse(text);
        const auto version = json.at("format_version").get<std::string>();
        if (version.substr(0, 2) != std::string(kFormatVersion).substr(0, 2)) {
            throw InputError(name + ": a report of format " + version + "; this command reads " +
                             kFormatVersion + ": check again with it");
        }
        StoredReports stored;
        for (const Json& report : json.at("reports")) {
            stored.reports.push_back(report_from_json(report));
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
