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
Answer conflict(const std::string& key, const std::string& family = "ipv4", int vr_id = 5) {
    return error("cannot configure the same address-family and vr-id as 'router vrrp interface " +
                 key + " address-family " + family + " vr-id " + std::to_string(vr_id) + "'.");
}
Setting ipv4(const std::string& key, int vr_id = 5) {
    return {instance(key, "ipv4", vr_id)};
}
Setting ipv6(const std::string& key, int vr_id = 5) {
    return {instance(key, "ipv6", vr_id)};
}
/// Asks about `own`, one of `all`.
template <typename... Parts>
Case asks(const std::string& name, const Setting& own, const Candidate& all,
          const Parts&... parts) {
    return Case(name, all, Request{own.path + "/id"}, parts...);
}

const std::string kKey64(64, 'k');
const Answer kConflict = conflict("vlan%d%n");
const Calls kNoIds = {"maapi_exists " + ids("", "ipv4"), "maapi_exists " + ids("", "ipv6")};

const AddRule kRule(
    "vrrp_vr_id_validation", "validate_vrrp_vr_id",
    {{1, "C_UINT8"}, {3, "C_ENUM_VALUE"}, {5, "C_BUF"}},
    {
        asks("only instance", ipv4("vlan%s%n"), {ipv4("vlan%s%n")}, ok(),
             Calls{listing(kInterfaces, {ok()}, ok()), reads("vlan%s%n", ok())}),
        asks("same identifier", ipv4("vlan%s%n"), {ipv4("vlan%s%n"), ipv4("vlan%d%n")}, kConflict,
             Calls{listing(kInterfaces, {kConflict, ok()}, ok()), reads("vlan%s%n", kConflict),
                   reads("vlan%d%n", ok()), kSetError}),
        asks("first behind itself", ipv4("X"), {ipv4("X"), ipv4("Y"), ipv4("Z")}, conflict("Y")),
        asks("other family or other identifier elsewhere", ipv4("X"),
             {ipv4("X"), ipv4("X", 6), ipv6("X"), ipv6("Y"), ipv4("Y", 7)}, ok()),
        asks("key in another case", ipv6("X", 255), {ipv6("X", 255), ipv6("x", 255)},
             conflict("x", "ipv6", 255)),
        asks("other key of 64 characters", ipv4("X"), {ipv4("X"), ipv4(kKey64)}, ok()),
        asks("own key of 64 characters", ipv4(kKey64), {ipv4(kKey64), ipv4("X")}, conflict("X")),
        asks("other key that a path would quote", ipv4("X"), {ipv4("X"), ipv4("b c")}, ok()),
        asks("key that is not printed", ipv4("X"), {ipv4("X"), ipv4("Y")},
             PlatformAnswers{{"confd_pp_value", -1}}, ok(),
             Calls{listing(kInterfaces, {ok(), ok()}, ok()), kNoIds, kNoIds}),
    });

}  // namespace
