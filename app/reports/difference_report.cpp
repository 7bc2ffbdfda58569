#include "reports/difference_report.h"

#include "reports/json.h"
#include "text/printable.h"

namespace {

std::string shown_value(const std::optional<std::string>& value) {
    return value.has_value() && !value->empty() ? printable(*value) : "\"\"";
}

}  // namespace

const ChangeLook& look_of(ChangeKind kind) {
    static constexpr ChangeLook kAdded{"+ ", "\033[32m", "added"};
    static constexpr ChangeLook kRemoved{"- ", "\033[31m", "removed"};
    static constexpr ChangeLook kChanged{"~ ", "\033[33m", "changed"};
    static constexpr ChangeLook kMoved{"~ ", "\033[33m", "moved"};
    switch (kind) {
        case ChangeKind::added:
            return kAdded;
        case ChangeKind::removed:
            return kRemoved;
        case ChangeKind::changed:
            return kChanged;
        default:
            return kMoved;
    }
}

std::string values_of(const Change& change) {
    if (change.kind == ChangeKind::added || change.kind == ChangeKind::removed) {
        const auto& value = change.kind == ChangeKind::added ? change.new_value : change.old_value;
        return value.value_or("").empty() ? "" : " " + printable(*value);
    }
    if (!change.old_value && !change.new_value) {
        return {};
    }
    const std::string start = change.kind == ChangeKind::moved ? " moved: " : " ";
    return change.old_value == change.new_value  // a secret's
               ? start + shown_value(change.new_value)
               : start + shown_value(change.old_value) + " → " + shown_value(change.new_value);
}

bool is_told_below(const Change& change, const Change& next) {
    return change.node.empty() && next.node.empty() && change.kind == next.kind &&
           next.group.compare(0, change.group.size() + 1, change.group + ' ') == 0;
}

namespace {

std::string marked(const Change& change, const std::string& text, bool colour) {
    const ChangeLook& look = look_of(change.kind);
    return colour ? look.colour + (look.mark + text) + "\033[0m" : look.mark + text;
}

std::string place_of(const Change& change) {
    const bool is_both = !change.group.empty() && !change.node.empty();
    return change.group + (is_both ? " " : "") + change.node;
}

}  // namespace

Json to_json(const Change& change) {
    Json json = {{"kind", look_of(change.kind).word},
                 {"path", printable(change.path)},
                 {"group", printable(change.group)},
                 {"cli_path", printable(place_of(change))}};
    if (change.old_value) {
        json["old"] = printable(*change.old_value);
    }
    if (change.new_value) {
        json["new"] = printable(*change.new_value);
    }
    return json;
}

Change change_from_json(const Json& json) {
    Change change;
    const auto word = json.at("kind").get<std::string>();
    for (const ChangeKind kind : {ChangeKind::added, ChangeKind::removed, ChangeKind::moved}) {
        change.kind = word == look_of(kind).word ? kind : change.kind;
    }
    change.path = json.at("path").get<std::string>();
    change.group = json.at("group").get<std::string>();
    change.node = json.at("cli_path").get<std::string>();
    change.node.erase(0, change.group.empty() ? 0 : change.group.size() + 1);
    if (json.contains("old")) {
        change.old_value = json["old"].get<std::string>();
    }
    if (json.contains("new")) {
        change.new_value = json["new"].get<std::string>();
    }
    return change;
}

std::string format_difference_text(const std::vector<Change>& changes, bool colour) {
    std::string text;
    std::string group;
    for (std::size_t i = 0; i < changes.size(); ++i) {
        const Change& change = changes[i];
        if (i + 1 < changes.size() && is_told_below(change, changes[i + 1])) {
            continue;
        }
        if (change.node.empty()) {
            text += marked(change, printable(change.group) + values_of(change), colour) + "\n";
        } else {
            if (change.group != group) {
                text += "  " + printable(change.group) + "\n";
            }
            text += (change.group.empty() ? "" : "    ") +
                    marked(change, printable(change.node) + values_of(change), colour) + "\n";
        }
        group = change.group;
    }
    return text;
}

std::string format_difference_json(const std::string& running, const std::string& candidate,
                                   const std::vector<Change>& changes) {
    Json list = Json::array();
    for (const Change& change : changes) {
        list.push_back(to_json(change));
    }
    const Json json = {{"format_version", "1.0"},
                       {"running", printable(running)},
                       {"candidate", printable(candidate)},
                       {"changes", list}};
    return json.dump(2) + "\n";
}
