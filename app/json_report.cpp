#include <nlohmann/json.hpp>

#include "report_format.h"

std::string format_json(const Report& report) {
    // Ordered, so that the object reads in the order in which it is described.
    auto findings = nlohmann::ordered_json::array();
    for (const Finding& finding : report.findings) {
        findings.push_back({{"severity", finding.severity == Severity::error ? "error" : "warning"},
                            {"selector", finding.selector},
                            {"path", finding.path},
                            {"message", finding.message}});
    }
    const nlohmann::ordered_json object = {{"candidate", report.candidate},
                                           {"valid", report.count(Severity::error) == 0},
                                           {"requests", report.requests},
                                           {"findings", findings}};
    // A file's name need not be UTF-8.
    return object.dump(2, ' ', false, nlohmann::ordered_json::error_handler_t::replace) + "\n";
}
