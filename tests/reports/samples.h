/// Reports made by hand.
#pragma once

#include "checking/report.h"
#include "reports/report_stream.h"

/// A refused change of an address, with everything filled that a finding can hold.
inline Finding changed_address() {
    Finding finding;
    finding.rule = "vrrp_ipv4_addr_update_validation";
    finding.path = "/router/vrrp/interface{l3-vlan10}/address-family{ipv4}/vr-id{5}";
    finding.cli_path = "router vrrp interface l3-vlan10 address-family ipv4 vr-id 5";
    finding.instance = VrrpInstance{"l3-vlan10", "ipv4", "5"};
    finding.message = "IPv4 address cannot be changed on interface l3 vlan10.";
    const std::string leaf = "config interface l3 vlan10 ipv4 address ip";
    const std::string path = "/config/interface/l3{vlan10}/ipv4/address/ip";
    finding.values = {{"running", path, leaf, "192.0.2.2/25", {"running.json", 8, 3}},
                      {"candidate", path, leaf, "192.0.2.2/24", {"candidate.json", 4, 7}}};
    finding.note = "the name holds a blank.";
    finding.help = "Keep the address.";
    finding.location = {"candidate.json", 6, 5};
    return finding;
}

/// A warning of which only what every finding has is filled.
inline Finding bare_warning() {
    Finding finding;
    finding.severity = Severity::warning;
    finding.rule = "vrrp_version_validation";
    finding.path = "/router/vrrp/interface{a}/address-family{ipv4}/vr-id{1}/version";
    finding.cli_path = "router vrrp interface a address-family ipv4 vr-id 1 version";
    finding.message = "changing the VRRP router version will restart the VRRP router process.";
    return finding;
}

inline Report checked(const std::string& candidate, std::vector<Finding> findings) {
    Report report;
    report.candidate = candidate;
    report.rule_names = {"vrrp_ipv4_addr_update_validation", "vrrp_version_validation",
                         "vrrp_vrf_validation"};
    report.requests = 3;
    report.instances = {{"l3-vlan10", "ipv4", "5"}};
    report.findings = std::move(findings);
    return report;
}

inline Report not_checked(const std::string& candidate) {
    Report report = checked(candidate, {});
    report.requests = 0;
    report.failure = candidate + ":3:9: ends too early.";
    report.failure_at = {candidate, 3, 9};
    return report;
}

/// The document of `reports`, of a run that did not reach `not_reached` more.
inline std::string formatted(const std::vector<Report>& reports, const ReportOptions& options,
                             std::size_t not_reached = 0) {
    std::string text;
    ReportStream stream(options, [&text](const std::string& part) { text += part; });
    for (const Report& report : reports) {
        stream.add(report);
    }
    stream.finish(not_reached);
    return text;
}

inline ReportOptions in(const std::string& format, bool accept_warnings = false) {
    ReportOptions options;
    options.format = format;
    options.accept_warnings = accept_warnings;
    return options;
}

inline std::string formatted(const std::vector<Report>& reports, const std::string& format,
                             bool accept_warnings = false) {
    return formatted(reports, in(format, accept_warnings));
}
