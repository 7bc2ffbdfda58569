#include "reports/report_json.h"

#include <algorithm>
#include <limits>
#include <stdexcept>
#include <tuple>

#include "reports/difference_text.h"
#include "reports/report_text.h"
#include "text/printable.h"

namespace {

// The members of each record, with their names in JSON; all of them are always there.

constexpr auto members(const Location& /*of*/) {
    return std::tuple(std::pair("file", &Location::file), std::pair("line", &Location::line),
                      std::pair("column", &Location::column));
}

constexpr auto members(const VrrpInstance& /*of*/) {
    return std::tuple(std::pair("interface", &VrrpInstance::interface),
                      std::pair("family", &VrrpInstance::family),
                      std::pair("id", &VrrpInstance::id));
}

constexpr auto members(const ReadValue& /*of*/) {
    return std::tuple(
        std::pair("datastore", &ReadValue::datastore), std::pair("path", &ReadValue::path),
        std::pair("cli_path", &ReadValue::cli_path), std::pair("value", &ReadValue::value),
        std::pair("location", &ReadValue::location));
}

constexpr auto members(const Finding& /*of*/) {
    return std::tuple(
        std::pair("severity", &Finding::severity), std::pair("rule", &Finding::rule),
        std::pair("path", &Finding::path), std::pair("cli_path", &Finding::cli_path),
        std::pair("instance", &Finding::instance), std::pair("message", &Finding::message),
        std::pair("note", &Finding::note), std::pair("help", &Finding::help),
        std::pair("cause", &Finding::cause), std::pair("location", &Finding::location),
        std::pair("node_location", &Finding::node_location), std::pair("values", &Finding::values));
}

constexpr auto members(const Omitted& /*of*/) {
    return std::tuple(std::pair("rule", &Omitted::rule), std::pair("errors", &Omitted::errors),
                      std::pair("warnings", &Omitted::warnings));
}

constexpr auto members(const UnknownData& /*of*/) {
    return std::tuple(std::pair("nodes", &UnknownData::nodes),
                      std::pair("modules", &UnknownData::modules),
                      std::pair("undefined_nodes", &UnknownData::unknown));
}

constexpr auto members(const Change& /*of*/) {
    return std::tuple(std::pair("kind", &Change::kind), std::pair("path", &Change::path),
                      std::pair("group", &Change::group), std::pair("node", &Change::node),
                      std::pair("old", &Change::old_value), std::pair("new", &Change::new_value));
}

constexpr auto members(const Report& /*of*/) {
    return std::tuple(
        std::pair("candidate", &Report::candidate), std::pair("running", &Report::running),
        std::pair("rules", &Report::rule_names), std::pair("requests", &Report::requests),
        std::pair("instances", &Report::instances),
        std::pair("removed_instances", &Report::removed_instances),
        std::pair("unknown_data", &Report::unknown_data), std::pair("changes", &Report::changes),
        std::pair("findings", &Report::findings), std::pair("omitted", &Report::omitted),
        std::pair("error", &Report::failure), std::pair("error_location", &Report::failure_at));
}

constexpr auto members(const Summary& /*of*/) {
    return std::tuple(
        std::pair("candidates", &Summary::candidates), std::pair("refused", &Summary::refused),
        std::pair("warned", &Summary::warned), std::pair("clean", &Summary::clean),
        std::pair("not_checked", &Summary::not_checked), std::pair("errors", &Summary::errors),
        std::pair("warnings", &Summary::warnings),
        std::pair("unknown_nodes", &Summary::unknown_nodes));
}

/// Writes values, and records member by member.
struct ToJson {
    Json operator()(std::size_t number) const { return number; }
    Json operator()(const char* word) const { return word; }
    Json operator()(const std::string& text) const { return printable(text); }
    Json operator()(Severity severity) const { return severity_word(severity); }
    Json operator()(ChangeKind kind) const { return look_of(kind).word; }

    template <typename Value>
    Json operator()(const std::optional<Value>& value) const {
        return value ? (*this)(*value) : Json();
    }

    template <typename Item>
    Json operator()(const std::vector<Item>& items) const {
        Json json = Json::array();
        for (const Item& item : items) {
            json.push_back((*this)(item));
        }
        return json;
    }

    template <typename Record>
    Json operator()(const Record& value) const {
        Json json;
        if constexpr (std::is_same_v<Record, Location>) {
            if (!value.is_known()) {
                return json;
            }
        }
        std::apply(
            [&](const auto&... each) { ((json[each.first] = (*this)(value.*each.second)), ...); },
            members(value));
        return json;
    }
};

/// Reads what ToJson has written, and nothing else: who wrote the text is not known.
struct FromJson {
    void operator()(const Json& json, std::size_t& number) const {
        constexpr auto kMost = std::numeric_limits<std::uint32_t>::max();  // no sum of them wraps
        if (!json.is_number_unsigned() || json > kMost) {
            throw std::domain_error("a count is no whole number from 0 to " +
                                    std::to_string(kMost));
        }
        json.get_to(number);
    }

    void operator()(const Json& json, std::string& text) const { json.get_to(text); }

    void operator()(const Json& json, const char*& datastore) const {
        pick(json, datastore, {"candidate", "running"});
    }

    void operator()(const Json& json, Severity& severity) const {
        pick(json, severity, {Severity::error, Severity::warning});
    }

    void operator()(const Json& json, ChangeKind& kind) const {
        pick(json, kind,
             {ChangeKind::added, ChangeKind::removed, ChangeKind::changed, ChangeKind::moved});
    }

    template <typename Value>
    void pick(const Json& json, Value& value, std::initializer_list<Value> all) const {
        const auto* const found = std::find_if(
            all.begin(), all.end(), [&](const Value& one) { return ToJson()(one) == json; });
        if (found == all.end()) {
            throw std::domain_error("no report has " + json.dump());
        }
        value = *found;
    }

    template <typename Value>
    void operator()(const Json& json, std::optional<Value>& value) const {
        if (!json.is_null()) {
            (*this)(json, value.emplace());
        }
    }

    template <typename Item>
    void operator()(const Json& json, std::vector<Item>& items) const {
        for (const Json& item : json.get_ref<const Json::array_t&>()) {
            (*this)(item, items.emplace_back());
        }
    }

    template <typename Record>
    void operator()(const Json& json, Record& value) const {
        if (std::is_same_v<Record, Location> && json.is_null()) {
            return;
        }
        std::apply(
            [&](const auto&... each) { ((*this)(json.at(each.first), value.*each.second), ...); },
            members(value));
    }
};

}  // namespace

Json report_to_json(const Report& report) {
    Json json = ToJson()(report);
    json["valid"] = report.failure.empty() && report.count(Severity::error) == 0;
    return json;
}

Report report_from_json(const Json& json) {
    Report report;
    FromJson()(json, report);
    return report;
}

Json summary_to_json(const Summary& summary) {
    return ToJson()(summary);
}

Summary summary_from_json(const Json& json) {
    Summary summary;
    FromJson()(json, summary);
    return summary;
}

std::string format_difference_json(const std::string& running, const std::string& candidate,
                                   const std::vector<Change>& changes,
                                   const UnknownData& not_compared) {
    const Json json = {
        {"format_version", kFormatVersion}, {"command_version", VRRP_VALID_VERSION},
        {"running", printable(running)},    {"candidate", printable(candidate)},
        {"changes", ToJson()(changes)},     {"not_compared", ToJson()(not_compared)}};
    return json.dump(2) + "\n";
}
