#include "rule.h"

namespace {

const std::string kAutomatic = "/address-link-local/link-local/auto-configuration";
const std::string kManual = "/address-link-local/link-local/ip";
const std::string kLong = instance(std::string(300, 'k'), "ipv6", 5);
const Answer kRefused =
    error("IPv6 link-local address is mandatory to enable router VRRP with address-family IPv6.");

/// What is called for an instance whose keypath prints as `path`.
Calls reads(const std::string& path) {
    return {Calls("confd_pp_kpath").fails_unseen(kRefused),
            Calls("maapi_exists " + path + kAutomatic).says_1(ok()),
            Calls("maapi_exists " + path + kManual).fails(kRefused).says_1(ok())};
}

const AddRule kRule(
    "vrrp_ipv6_link_local_addr_validation", "validate_vrrp_ipv6_link_local_addr",
    {{2, "C_ENUM_VALUE"}},
    {
        Case("address", Candidate{{kIpv6Instance + kManual, "fe80::1"}}, Request{kIpv6Instance},
             ok(), reads(kIpv6Instance)),
        Case("no setting", Request{kIpv6Instance}, kRefused,
             Calls{reads(kIpv6Instance), kSetError}),
        Case("IPv4 instance", ok(), kNoCalls),
        Case("automatic", Candidate{{kIpv6Instance + kAutomatic}}, Request{kIpv6Instance}, ok(),
             reads(kIpv6Instance)),
        Case("path cut to 255 characters", Candidate{{kLong + kManual, "fe80::1"}}, Request{kLong},
             kRefused, Calls{reads(kLong.substr(0, 255)), kSetError}),
        Case("path that is not printed", Request{kIpv6Instance},
             PlatformAnswers{{"confd_pp_kpath", -1}}, kRefused, Calls{reads(""), kSetError}),
    });

}  // namespace
