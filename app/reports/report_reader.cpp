#include "reports/report_reader.h"

#include <algorithm>
#include <stdexcept>

#include "errors/input_error.h"
#include "reports/report_json.h"

namespace {

constexpr int kDeepest = 1000;  ///< far more levels than a report has

/// The document in `text`, of bounded depth: deeper ones cost the stack.
Json parse(const std::string& text) {
    return Json::parse(text, [](int depth, Json::parse_event_t /*event*/, const Json& /*value*/) {
        if (depth > kDeepest) {
            throw std::domain_error("more than " + std::to_string(kDeepest) + " levels");
        }
        return true;
    });
}

}  // namespace

StoredReports read_reports(const std::string& name, const std::string& text) {
    try {
        const Json json = parse(text);
        const auto version = json.at("format_version").get<std::string>();
        if (version.substr(0, 2) != std::string(kFormatVersion).substr(0, 2)) {
            throw InputError(name + ": a report of format " + version + "; this command reads " +
                             kFormatVersion + ": check again with it");
        }
        StoredReports stored;
        Summary sum;
        for (const Json& report : json.at("reports").get_ref<const Json::array_t&>()) {
            stored.reports.push_back(report_from_json(report));
            sum.add(stored.reports.back());
        }
        const Summary told = summary_from_json(json.at("summary"));
        stored.not_reached = std::max(told.candidates, sum.candidates) - sum.candidates;
        sum.add_unreached(stored.not_reached);
        if (summary_to_json(sum) != summary_to_json(told)) {
            throw InputError(name + ": its summary does not add up with its reports; check again");
        }
        return stored;
    } catch (const Json::parse_error& error) {
        throw InputError(SourceText(name, text).location(std::min(error.byte, text.size())),
                         "not a complete report of vrrp-valid check --format json: the JSON ends "
                         "early or is broken here; run that check again");
    } catch (const Json::exception&) {
        throw InputError(name + ": not a report of vrrp-valid check --format json");
    } catch (const std::domain_error& error) {
        throw InputError(name +
                         ": not a report of vrrp-valid check --format json: " + error.what());
    }
}
