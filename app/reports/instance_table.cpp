#include "reports/instance_table.h"

#include <map>
#include <string_view>
#include <tuple>

#include "reports/report_text.h"
#include "reports/xml_elements.h"

namespace {

using Keys = std::tuple<std::string_view, std::string_view, std::string_view>;

Keys keys_of(const VrrpInstance& instance) {
    return {instance.interface, instance.family, instance.id};
}

/// The first finding in each instance, errors before warnings.
std::map<Keys, const Finding*> worst_findings(const std::vector<Finding>& findings) {
    std::map<Keys, const Finding*> worst;
    for (const Severity severity : {Severity::error, Severity::warning}) {
        for (const Finding& finding : findings) {
            if (finding.instance && finding.severity == severity) {
                worst.emplace(keys_of(*finding.instance), &finding);
            }
        }
    }
    return worst;
}

}  // namespace

void add_instances(pugi::xml_node parent, const std::vector<VrrpInstance>& instances,
                   const std::vector<Finding>& findings,
                   const std::function<std::string(const Finding&)>& anchor) {
    const auto worst = worst_findings(findings);
    add_element(parent, "p", "hint soft", "Scroll sideways to see the IPv6 identifiers.");
    pugi::xml_node frame = add_element(parent, "div", "scroll");
    frame.append_attribute("tabindex") = 0;
    pugi::xml_node table = add_element(frame, "table");
    add_heads(table, {"VRRP interface", "IPv4 identifiers", "IPv6 identifiers"});
    pugi::xml_node body = add_element(table, "tbody");
    pugi::xml_node ipv4;
    pugi::xml_node ipv6;
    const std::string* interface = nullptr;
    for (const VrrpInstance& instance : instances) {
        if (interface == nullptr || *interface != instance.interface) {
            interface = &instance.interface;
            pugi::xml_node row = add_element(body, "tr");
            add_element(row, "td", {}, *interface);
            ipv4 = add_element(row, "td");
            ipv6 = add_element(row, "td");
        }
        pugi::xml_node cell = instance.family == "ipv4" ? ipv4 : ipv6;
        const auto found = worst.find(keys_of(instance));
        if (found == worst.end()) {
            add_element(cell, "span", "chip", instance.id);
            continue;
        }
        const Finding& finding = *found->second;
        const std::string severity = severity_word(finding.severity);
        pugi::xml_node link = add_element(cell, "a", "chip " + severity, instance.id + " !");
        set_attribute(link, "href", "#" + anchor(finding));
        set_attribute(link, "title", severity + ": " + finding.message);
    }
}
