#include "rule.h"

namespace {

const std::string kSecondary = kL3 + "/ipv4/address/secondary";
const Answer kRefused = error(
    "secondary IPv4 address must not be configured on interface l3 vlan%s%n with VRRP enabled.");
const Calls kCount = Calls("maapi_num_instances " + kSecondary).fails(ok()).says_1(kRefused);

const AddRule kRule(
    "vrrp_secondary_ipv4_addr_validation", "validate_vrrp_secondary_ipv4_addr",
    {{2, "C_ENUM_VALUE"}, {4, "C_BUF"}},
    {
        Case("primary address alone", Candidate{{kL3 + "/ipv4/address/ip", "192.0.2.1/24"}}, ok(),
             kCount),
        Case("two secondary addresses",
             Candidate{{kSecondary + "{10.0.0.1/8}"}, {kSecondary + "{10.0.0.2/8}"}}, kRefused,
             Calls{kCount, kSetError}),
        Case("secondary address beside an IPv6 instance", Candidate{{kSecondary + "{10.0.0.1/8}"}},
             Request{kIpv6Instance}, WrongType{4}, ok(), kNoCalls),
    });

}  // namespace
