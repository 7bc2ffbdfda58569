#include "rule.h"

namespace {

const std::string kVrf = kL3 + "/vrf";
const Answer kRefused =
    error("VRF must not be configured on interface l3 vlan%s%n with VRRP enabled.");
const Calls kReads = Calls("maapi_exists " + kVrf).fails(ok()).says_1(kRefused);

/// Where the rule looks for the VRF of a VRRP interface with this key.
Case looks_at(const std::string& name, const std::string& key, const std::string& l3_name) {
    return Case(name, Request{instance(key, "ipv4", 5)}, ok(),
                Calls{"maapi_exists /config/interface/l3{" + l3_name + "}/vrf"});
}

const AddRule kRule("vrrp_vrf_validation", "validate_vrrp_vrf", {{4, "C_BUF"}},
                    {
                        Case("VRF removed", Running{{kVrf, "red"}}, ok(), kReads),
                        Case("VRF", Candidate{{kVrf, "red"}}, kRefused, Calls{kReads, kSetError}),
                        looks_at("key without a dash", "vlan%s%n", "vlan%s%n"),
                        looks_at("key with two dashes", "l3-vlan-10", "vlan-10"),
                        looks_at("key with a NUL", std::string("l3-a\0b", 6), "a"),
                        looks_at("key of 300 characters", "l3-" + std::string(300, 'k'),
                                 std::string(300, 'k')),
                    });

}  // namespace
