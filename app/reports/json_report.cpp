#include <nlohmann/json.hpp>

#include "reports/report_format.h"

// Ordered, so that an object reads in the order in which it is described.
using Json = nlohmann::ordered_json;

namespace {

Json to_json(const Report& report) {
    if (!report.failure.empty()) {
        return {{"candidate", report.candidate}, {"error", report.failure}};
    }
    Json findings = Json::array();
    for (const Finding& finding : report.findings) {
        findings.push_back({{"severity", finding.severity == Severity::error ? "error" : "warning"},
                            {"selector", finding.selector},
                            {"path", finding.path},
                            {"message", finding.message}});
    }
    return {{"candidate", report.candidate},
            {"valid", report.count(Severity::error) == 0},
            {"requests", report.requests},
            {"findings", findings}};
}

}  // namespace

std::string format_json(const std::vector<Report>& reports) {
    Json json = Json::array();
    for (const Report& report : reports) {
        json.push_back(to_json(report));
    }
    if (json.size() == 1) {
        json = Json(json.front());
    }
    // A file's name need not be UTF-8.
    return json.dump(2, ' ', false, Json::error_handler_t::replace) + "\n";
}
