#include "reports/instance_picture.h"

#include <algorithm>
#include <map>
#include <optional>
#include <set>
#include <tuple>

#include "reports/html_elements.h"
#include "reports/report_text.h"

namespace {

constexpr std::size_t kMostRows = 60;  ///< more than that is a wall, not a picture
constexpr std::size_t kChipsInLine = 6;
constexpr int kNameWidth = 220;
constexpr int kChipWidth = 52;
constexpr int kChipHeight = 26;
constexpr int kGap = 8;
constexpr int kHeadHeight = 34;
constexpr int kFamilyWidth = static_cast<int>(kChipsInLine) * (kChipWidth + kGap) + 40;
constexpr int kWidth = kNameWidth + 2 * kFamilyWidth;
constexpr std::size_t kNameLength = 26;

struct Chip {
    const VrrpInstance* instance;
    std::optional<std::size_t> finding;  ///< the number of its first one, errors before warnings
    Severity severity = Severity::error;
    bool is_in_conflict = false;
    int x = 0;
    int y = 0;
};

struct Row {
    std::string interface;
    std::map<std::string, std::vector<Chip>> families;
    bool is_clean = true;
    int y = 0;
    int height = 0;
};

std::string place_of(const VrrpInstance& instance) {
    return "router vrrp interface " + instance.interface + " address-family " + instance.family +
           " vr-id " + instance.id;
}

/// The numbers of the first finding in each instance, by the instance's place.
std::map<std::string, std::size_t> findings_by_place(const Report& report) {
    constexpr std::string_view kWord = " vr-id ";
    std::map<std::string, std::size_t> numbers;
    for (std::size_t i = 0; i < report.findings.size(); ++i) {
        const std::string& place = report.findings[i].cli_path;
        const std::size_t word = place.rfind(kWord);
        if (word == std::string::npos) {
            continue;
        }
        const std::size_t end = place.find(' ', word + kWord.size());
        const auto [found, is_new] = numbers.emplace(place.substr(0, end), i);
        const bool is_worse = report.findings[i].severity == Severity::error &&
                              report.findings[found->second].severity == Severity::warning;
        if (is_worse) {
            found->second = i;
        }
    }
    return numbers;
}

using Identifier = std::pair<std::string, std::string>;

/// On which interfaces each identifier of a family is used.
std::map<Identifier, std::set<std::string>> users(const std::vector<VrrpInstance>& instances) {
    std::map<Identifier, std::set<std::string>> users;
    for (const VrrpInstance& instance : instances) {
        users[{instance.family, instance.id}].insert(instance.interface);
    }
    return users;
}

std::vector<Row> rows_of(const Report& report) {
    const auto findings = findings_by_place(report);
    const auto interfaces = users(report.instances);
    std::vector<Row> rows;
    std::map<std::string, std::size_t> index;
    for (const VrrpInstance& instance : report.instances) {
        const auto [at, is_new] = index.emplace(instance.interface, rows.size());
        if (is_new) {
            rows.push_back({instance.interface, {}});
        }
        Row& row = rows[at->second];
        Chip chip{&instance, {}};
        chip.is_in_conflict = interfaces.at({instance.family, instance.id}).size() > 1;
        const auto finding = findings.find(place_of(instance));
        if (finding != findings.end()) {
            chip.finding = finding->second;
            chip.severity = report.findings[finding->second].severity;
        }
        row.is_clean = row.is_clean && !chip.finding && !chip.is_in_conflict;
        row.families[instance.family].push_back(chip);
    }
    return rows;
}

/// Keeps as many rows as a picture holds, those with findings first, and tells how many it dropped.
std::size_t drop_rows(std::vector<Row>& rows) {
    if (rows.size() <= kMostRows) {
        return 0;
    }
    std::stable_partition(rows.begin(), rows.end(), [](const Row& row) { return !row.is_clean; });
    const std::size_t dropped = rows.size() - kMostRows;
    rows.resize(kMostRows);
    return dropped;
}

/// Gives every row and chip its place; the height of all.
int lay_out(std::vector<Row>& rows) {
    int y = kHeadHeight;
    for (Row& row : rows) {
        row.y = y;
        std::size_t lines = 1;
        for (auto& [family, chips] : row.families) {
            lines = std::max(lines, (chips.size() + kChipsInLine - 1) / kChipsInLine);
            const int left = kNameWidth + (family == "ipv4" ? 0 : kFamilyWidth);
            for (std::size_t i = 0; i < chips.size(); ++i) {
                chips[i].x = left + static_cast<int>(i % kChipsInLine) * (kChipWidth + kGap);
                chips[i].y = y + kGap + static_cast<int>(i / kChipsInLine) * (kChipHeight + kGap);
            }
        }
        row.height = static_cast<int>(lines) * (kChipHeight + kGap) + kGap;
        y += row.height;
    }
    return y + 1;
}

void set_number(pugi::xml_node element, const char* name, int value) {
    element.append_attribute(name) = value;
}

void draw_text(pugi::xml_node parent, int x, int y, const std::string& text,
               const char* look = "") {
    pugi::xml_node element = add_element(parent, "text", look, text);
    set_number(element, "x", x);
    set_number(element, "y", y);
}

void draw_rectangle(pugi::xml_node parent, int x, int y, int width, int height, int radius) {
    pugi::xml_node element = add_element(parent, "rect");
    set_number(element, "x", x);
    set_number(element, "y", y);
    set_number(element, "width", width);
    set_number(element, "height", height);
    set_number(element, "rx", radius);
}

const char* look_of(const Chip& chip) {
    if (chip.is_in_conflict || (chip.finding && chip.severity == Severity::error)) {
        return "chip error";
    }
    return chip.finding ? "chip warning" : "chip";
}

void draw_chip(pugi::xml_node svg, const Chip& chip,
               const std::function<std::string(std::size_t)>& anchor) {
    pugi::xml_node group = add_element(svg, chip.finding ? "a" : "g", look_of(chip));
    if (chip.finding) {
        set_attribute(group, "href", "#" + anchor(*chip.finding));
    }
    const char* const state = chip.is_in_conflict                ? ": used on another interface too"
                              : !chip.finding                    ? ""
                              : chip.severity == Severity::error ? ": error"
                                                                 : ": warning";
    add_element(group, "title", "", place_of(*chip.instance) + state);
    draw_rectangle(group, chip.x, chip.y, kChipWidth, kChipHeight, 6);
    pugi::xml_node text = add_element(
        group, "text", "", chip.instance->id + (chip.finding || chip.is_in_conflict ? " !" : ""));
    set_number(text, "x", chip.x + kChipWidth / 2);
    set_number(text, "y", chip.y + kChipHeight / 2 + 5);
    text.append_attribute("text-anchor") = "middle";
}

/// A bow from each chip of a conflict to the next.
void draw_conflicts(pugi::xml_node svg, const std::vector<Row>& rows) {
    std::map<Identifier, const Chip*> last;
    for (const Row& row : rows) {
        for (const auto& [family, chips] : row.families) {
            for (const Chip& chip : chips) {
                if (!chip.is_in_conflict) {
                    continue;
                }
                const Chip*& before = last[{family, chip.instance->id}];
                if (before != nullptr) {
                    const auto end = [](const Chip& one) {
                        return std::to_string(one.x + kChipWidth) + " " +
                               std::to_string(one.y + kChipHeight / 2);
                    };
                    const auto bend = [](const Chip& one) {
                        return std::to_string(one.x + kChipWidth + 34) + " " +
                               std::to_string(one.y + kChipHeight / 2);
                    };
                    pugi::xml_node path = add_element(svg, "path", "conflict");
                    set_attribute(path, "d",
                                  "M" + end(*before) + " C" + bend(*before) + " " + bend(chip) +
                                      " " + end(chip));
                }
                before = &chip;
            }
        }
    }
}

std::string description(const Report& report, const std::vector<Row>& rows) {
    std::string text = counted(report.instances.size(), "VRRP instance") + " on " +
                       counted(rows.size(), "interface") + ".";
    for (const auto& [identifier, interfaces] : users(report.instances)) {
        if (interfaces.size() < 2) {
            continue;
        }
        text += " " + identifier.first + " identifier " + identifier.second + " is used on";
        const char* separator = " ";
        for (const std::string& interface : interfaces) {
            text += separator + interface;
            separator = ", ";
        }
        text += ".";
    }
    return text;
}

/// A name that fits its column; the whole of it is in the title.
std::string shortened(const std::string& name) {
    const std::string shown = printable(name);
    return shown.size() <= kNameLength ? shown : shown.substr(0, kNameLength - 3) + "...";
}

}  // namespace

void draw_instances(pugi::xml_node parent, const Report& report,
                    const std::function<std::string(std::size_t)>& anchor) {
    std::vector<Row> rows = rows_of(report);
    const std::string words = description(report, rows);
    const std::size_t dropped = drop_rows(rows);
    const int height = lay_out(rows);
    pugi::xml_node svg = add_element(add_element(parent, "div", "picture"), "svg");
    svg.append_attribute("xmlns") = "http://www.w3.org/2000/svg";
    svg.append_attribute("role") = "group";
    set_attribute(svg, "aria-label", words);
    set_number(svg, "width", kWidth);
    set_number(svg, "height", height);
    set_attribute(svg, "viewBox", "0 0 " + std::to_string(kWidth) + " " + std::to_string(height));
    draw_text(svg, 0, 20, "VRRP interface", "soft");
    draw_text(svg, kNameWidth, 20, "IPv4 identifiers", "soft");
    draw_text(svg, kNameWidth + kFamilyWidth, 20, "IPv6 identifiers", "soft");
    for (const Row& row : rows) {
        pugi::xml_node line = add_element(svg, "path", "row");
        set_attribute(line, "d", "M0 " + std::to_string(row.y) + ".5 H" + std::to_string(kWidth));
        draw_text(svg, 0, row.y + kGap + kChipHeight / 2 + 5, shortened(row.interface));
    }
    draw_conflicts(svg, rows);
    for (const Row& row : rows) {
        for (const auto& [family, chips] : row.families) {
            for (const Chip& chip : chips) {
                draw_chip(svg, chip, anchor);
            }
        }
    }
    add_element(parent, "p", "soft", words);
    if (dropped > 0) {
        add_element(
            parent, "p", "soft",
            counted(dropped, "more interface") + " not drawn; those with findings come first.");
    }
}
