#include "rule.h"

namespace {

const std::string kInterfaces = "router/vrrp/interface";

/// The list of identifiers of a VRRP interface, as the rule names it.
std::string ids(const std::string& key, const std::string& family) {
    return kInterfaces + "{" + key + "}/address-family{" + family + "}/vr-id";
}
/// What is called for a VRRP interface with one IPv4 instance, and answered when it is not found.
Calls reads(const std::string& key, const Answer& unlisted) {
    return {listing(ids(key, "ipv4"), {{"exception: stoi"}}, unlisted),
            "maapi_exists " + ids(key, "ipv6")};
}
Answer conflict(const std::string& other) {
    return error("cannot configure the same address-family and vr-id as 'router vrrp interface " +
                 other + "'.");
}
Setting ipv4(const std::string& key, int vr_id = 5) {
    return {instance(key, "ipv4", vr_id)};
}
Setting ipv6(const std::string& key, int vr_id = 5) {
    return {instance(key, "ipv6", vr_id)};
}
Request id_of(const Setting& entry) {
    return {entry.path + "/id"};
}

const std::string kKey64(64, 'k');
const Answer kConflict = conflict("vlan20 address-family ipv4 vr-id 5");
const Calls kNoIds = {"maapi_exists " + ids("", "ipv4"), "maapi_exists " + ids("", "ipv6")};

const AddRule kRule(
    "vrrp_vr_id_validation", "validate_vrrp_vr_id",
    {{1, "C_UINT8"}, {3, "C_ENUM_VALUE"}, {5, "C_BUF"}},
    {
        Case("only instance", Candidate{ipv4("vlan10")}, id_of(ipv4("vlan10")), ok(),
             Calls{listing(kInterfaces, {ok()}, ok()), reads("vlan10", ok())}),
        Case("same identifier on two interfaces", Candidate{ipv4("vlan10"), ipv4("vlan20")},
             id_of(ipv4("vlan10")), kConflict,
             Calls{listing(kInterfaces, {kConflict, ok()}, ok()), reads("vlan10", kConflict),
                   reads("vlan20", ok()), kSetError}),
        Case("dash in a key", Candidate{ipv4("l3-X"), ipv4("X"), ipv4("Y")}, id_of(ipv4("X")),
             conflict("l3-X address-family ipv4 vr-id 5")),
        Case("first of two others", Candidate{ipv4("X"), ipv4("Y"), ipv4("Z")}, id_of(ipv4("Z")),
             conflict("X address-family ipv4 vr-id 5")),
        Case("first other behind itself", Candidate{ipv4("X"), ipv4("Y"), ipv4("Z")},
             id_of(ipv4("X")), conflict("Y address-family ipv4 vr-id 5")),
        Case("other family or other identifier elsewhere",
             Candidate{ipv4("X"), ipv4("X", 6), ipv6("X"), ipv6("Y"), ipv4("Y", 7)},
             id_of(ipv4("X")), ok()),
        Case("key in another case", Candidate{ipv6("X", 255), ipv6("x", 255)},
             id_of(ipv6("X", 255)), conflict("x address-family ipv6 vr-id 255")),
        Case("identifier 0", Candidate{ipv4("X", 0), ipv4("Y", 0)}, id_of(ipv4("X", 0)),
             conflict("Y address-family ipv4 vr-id 0")),
        Case("other key of 64 characters", Candidate{ipv4("X"), ipv4(kKey64)}, id_of(ipv4("X")),
             ok()),
        Case("own key of 64 characters", Candidate{ipv4(kKey64), ipv4("X")}, id_of(ipv4(kKey64)),
             conflict("X address-family ipv4 vr-id 5")),
        Case("other key that a path would quote", Candidate{ipv4("X"), ipv4("b c")},
             id_of(ipv4("X")), ok()),
        Case("key that is not printed", Candidate{ipv4("X"), ipv4("Y")}, id_of(ipv4("X")),
             PlatformAnswers{{"confd_pp_value", -1}}, ok(),
             Calls{listing(kInterfaces, {ok(), ok()}, ok()), kNoIds, kNoIds}),
    });

}  // namespace
