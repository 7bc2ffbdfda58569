#include "reports/difference_text.h"

#include "text/printable.h"

namespace {

std::string shown_value(const std::optional<std::string>& value) {
    return value.value_or("").empty() ? "\"\"" : printable(*value);
}

/// What follows the node: " 120 → 150".
std::string values_of(const Change& change) {
    if (change.kind == ChangeKind::added || change.kind == ChangeKind::removed) {
        const auto& value = change.kind == ChangeKind::added ? change.new_value : change.old_value;
        return value.value_or("").empty() ? "" : " " + printable(*value);
    }
    if (!change.old_value && !change.new_value) {
        return {};
    }
    const bool is_secret = change.old_value == change.new_value;
    return (change.kind == ChangeKind::moved ? " moved: " : " ") +
           (is_secret ? "" : shown_value(change.old_value) + " → ") + shown_value(change.new_value);
}

/// Whether `change`, before `next`, has nothing to say of its own: an entry that comes or goes only
/// with entries below it.
bool is_told_below(const Change& change, const Change& next) {
    return change.node.empty() && next.node.empty() && change.kind == next.kind &&
           next.group.compare(0, change.group.size() + 1, change.group + ' ') == 0;
}

}  // namespace

const ChangeLook& look_of(ChangeKind kind) {
    static constexpr ChangeLook kLooks[] = {{"+ ", "\033[32m", "added"},
                                            {"- ", "\033[31m", "removed"},
                                            {"~ ", "\033[33m", "changed"},
                                            {"~ ", "\033[33m", "moved"}};
    return kLooks[static_cast<std::size_t>(kind)];
}

std::vector<ChangeLine> difference_lines(const std::vector<Change>& changes) {
    std::vector<ChangeLine> lines;
    std::string group;
    for (std::size_t i = 0; i < changes.size(); ++i) {
        const Change& change = changes[i];
        if (i + 1 < changes.size() && is_told_below(change, changes[i + 1])) {
            continue;
        }
        const bool is_whole = change.node.empty();
        if (!is_whole && !change.group.empty() && change.group != group) {
            lines.push_back({nullptr, 1, printable(change.group), false});
        }
        lines.push_back({&look_of(change.kind), is_whole || change.group.empty() ? 0U : 2U,
                         printable(is_whole ? change.group : change.node) + values_of(change),
                         change.group.empty()});
        group = change.group;
    }
    return lines;
}

std::string format_difference_text(const std::vector<Change>& changes, bool colour) {
    std::string text;
    for (const ChangeLine& line : difference_lines(changes)) {
        text += std::string(2 * line.depth, ' ');
        if (line.look != nullptr) {
            text += (colour ? line.look->colour : "") + std::string(line.look->mark);
        }
        text += line.text + (colour && line.look != nullptr ? "\033[0m\n" : "\n");
    }
    return text;
}
