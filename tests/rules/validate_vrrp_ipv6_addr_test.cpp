#include "rule.h"

namespace {

const std::string kList = kL3 + "/ipv6/address";
const Answer kMissing = error("IPv6 address must be configured on interface l3 vlan10.");
const Answer kUnread = error("could not validate IPv6 address on interface l3 vlan10.");
const Answer kNetwork = error("virtual IPv6 address cannot be configured as network address.");
const Answer kOutside = error(
    "virtual IPv6 address must be configured on the same network as one of the IPv6 "
    "addresses on interface l3 vlan10.");

Setting address(const std::string& text) {
    return {kList + "{" + text + "}"};
}
Request virtual_address(const std::string& text) {
    return {kIpv6Instance + "/address/ipv6{" + text + "}"};
}

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

const AddRule kAddressRule(
    "vrrp_l3_ipv6_addr_validation", "validate_vrrp_l3_ipv6_addr", {{7, "C_BUF"}, {0, "C_IPV6"}},
    {
        Case("within the second network",
             Candidate{address("2001:db8:1::1/64"), address("2001:db8:2::1/64")},
             virtual_address("2001:db8:2::5"), ok(),
             reads({"2001:db8:1::1/64", "2001:db8:2::1/64"})),
        Case("outside the network", Candidate{address("2001:db8:1::1/64")},
             virtual_address("2001:db8:3::5"), kOutside,
             Calls{reads({"2001:db8:1::1/64"}), kSetError}),
        Case("interface address", Candidate{address("2001:db8:1::1/64")},
             virtual_address("2001:db8:1::1"), ok()),
        Case("network of the second prefix",
             Candidate{address("2001:db8::1/32"), address("2001:db8:1::1/64")},
             virtual_address("2001:db8:1::"), kNetwork),
        Case("network of the first prefix",
             Candidate{address("2001:db8:1::1/64"), address("2001:db8::1/32")},
             virtual_address("2001:db8:1::"), kNetwork),
        Case("each address under its own prefix",
             Candidate{address("2001:db8:1::1/64"), address("2001:db9::1/32")},
             virtual_address("2001:db9:5::"), ok()),
        Case("128 bits", Candidate{address("2001:db8::2/128")}, virtual_address("2001:db8::2"),
             ok()),
        Case("entries counted but not listed", virtual_address("2001:db8::2"),
             PlatformAnswers{{"maapi_exists", 1}, {"maapi_num_instances", 1}}, kOutside,
             Calls{reads({}), kSetError}),
        Case("key that is not printed", Candidate{address("2001:db8::1/64")},
             virtual_address("2001:db8::2"), PlatformAnswers{{"confd_pp_value", -1}}, kUnread,
             Calls{reads({""}), kSetError}),
        Case("no address before a wrong key", virtual_address("2001:db8::1"), WrongType{0},
             kMissing, Calls{"maapi_exists " + kList, kSetError}),
    });

const std::string kEnable = kL3 + "/ipv6/enable";
const Request kLinkLocal = {kIpv6Instance + "/address-link-local"};
const Answer kDisabled = error("IPv6 must be enabled on interface l3 vlan10.");
const Calls kEnableReads = {Calls("maapi_exists " + kEnable).fails(kDisabled),
                            Calls("maapi_get_bool_elem " + kEnable).fails({"CONFD_ERR"})};

const AddRule kEnableRule("vrrp_l3_ipv6_link_local_addr_validation",
                          "validate_vrrp_l3_ipv6_link_local_addr", {{5, "C_BUF"}},
                          {
                              Case("IPv6 enabled", Candidate{{kEnable, "true"}}, kLinkLocal, ok(),
                                   kEnableReads),
                              Case("IPv6 disabled", Candidate{{kEnable, "false"}}, kLinkLocal,
                                   kDisabled, Calls{kEnableReads, kSetError}),
                              Case("IPv6 not mentioned", kLinkLocal, kDisabled,
                                   Calls{"maapi_exists " + kEnable, kSetError}),
                          });

}  // namespace
