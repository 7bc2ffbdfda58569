#include "rule.h"

namespace {

const std::string kList = kL3 + "/ipv6/address";
const Answer kMissing = error("IPv6 address must be configured on interface l3 vlan%s%n.");
const Answer kUnread = error("could not validate IPv6 address on interface l3 vlan%s%n.");
const Answer kNetwork = error("virtual IPv6 address cannot be configured as network address.");
const Answer kOutside = error(
    "virtual IPv6 address must be configured on the same network as one of the IPv6 "
    "addresses on interface l3 vlan%s%n.");

Calls read(const std::string& text) {
    return Calls("maapi_get_ipv6_and_plen_elem " + kList + "{" + text + "}/ip").fails(kUnread);
}
/// What is called for an interface with the addresses `texts`.
Calls reads(const Lines& texts) {
    Calls calls = {Calls("maapi_exists " + kList).fails(kMissing),
                   Calls("maapi_num_instances " + kList).fails(kMissing),
                   listing(kList, std::vector(texts.size(), kUnread), kOutside)};
    for (const std::string& text : texts) {
        calls = {calls, read(text)};
    }
    return calls;
}

/// Asks about the virtual address `ip` on an interface with the addresses `own`.
template <typename... Parts>
Case asks(const std::string& name, const std::string& ip, const Lines& own, const Parts&... parts) {
    Candidate candidate;
    for (const std::string& address : own) {
        candidate.push_back({kList + "{" + address + "}"});
    }
    return Case(name, candidate, Request{kIpv6Instance + "/address/ipv6{" + ip + "}"}, parts...);
}

const AddRule kAddressRule(
    "vrrp_l3_ipv6_addr_validation", "validate_vrrp_l3_ipv6_addr", {{7, "C_BUF"}, {0, "C_IPV6"}},
    {
        asks("within the second network", "2001:db8:2::5", {"2001:db8:1::1/64", "2001:db8:2::1/64"},
             ok(), reads({"2001:db8:1::1/64", "2001:db8:2::1/64"})),
        asks("outside", "2001:db8:3::5", {"2001:db8:1::1/64"}, kOutside,
             Calls{reads({"2001:db8:1::1/64"}), kSetError}),
        asks("second network", "2001:db8:1::", {"2001:db8::1/32", "2001:db8:1::1/64"}, kNetwork),
        asks("first network", "2001:db8:1::", {"2001:db8:1::1/64", "2001:db8::1/32"}, kNetwork),
        asks("next 33 bits", "2001:db8:8000::1", {"2001:db8::1/33"}, kOutside),
        asks("network of 33 bits", "2001:db8:8000::", {"2001:db8:8000::1/33"}, kNetwork),
        asks("128 bits", "2001:db8::2", {"2001:db8::2/128"}, ok()),
        asks("own prefixes", "2001:db9:5::", {"2001:db8:1::1/64", "2001:db9::1/32"}, ok()),
        asks("entries counted but not listed", "2001:db8::2", {},
             PlatformAnswers{{"maapi_exists", 1}, {"maapi_num_instances", 1}}, kOutside,
             Calls{reads({}), kSetError}),
        asks("key that is not printed", "2001:db8::2", {"2001:db8::1/64"},
             PlatformAnswers{{"confd_pp_value", -1}}, kUnread, Calls{reads({""}), kSetError}),
        asks("no address before a wrong key", "2001:db8::1", {}, WrongType{0}, kMissing,
             Calls{"maapi_exists " + kList, kSetError}),
    });

const std::string kEnable = kL3 + "/ipv6/enable";
const Request kLinkLocal = {kIpv6Instance + "/address-link-local"};
const Answer kDisabled = error("IPv6 must be enabled on interface l3 vlan%s%n.");
const Calls kEnableReads = {Calls("maapi_exists " + kEnable).fails(kDisabled),
                            Calls("maapi_get_bool_elem " + kEnable).fails({"CONFD_ERR"})};

const AddRule kEnableRule("vrrp_l3_ipv6_link_local_addr_validation",
                          "validate_vrrp_l3_ipv6_link_local_addr", {{5, "C_BUF"}},
                          {
                              Case("IPv6 enabled", Candidate{{kEnable, "true"}}, kLinkLocal, ok(),
                                   kEnableReads),
                              Case("IPv6 disabled", Candidate{{kEnable, "false"}}, kLinkLocal,
                                   kDisabled, Calls{kEnableReads, kSetError}),
                          });

}  // namespace
