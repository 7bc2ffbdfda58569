/// Loads the plug-in that was built against the SDK, as a router's host does, and sends it requests
/// of every rule. usage: host PLUGIN
#include <arpa/inet.h>
#include <confd_lib.h>
#include <dlfcn.h>

#include <cstdlib>
#include <iostream>
#include <utility>
#include <vector>

#include "datastores.h"

namespace {

const std::string kL3 = "config/interface/l3{eth0}/";
const std::string kVrrp = "router/vrrp/interface{l3-eth0}/address-family";

using Keys = std::vector<std::pair<int, confd_value_t>>;

struct Request {
    std::string selector;
    Keys keys;
    Datastore candidate;
    Datastore running;
    int result;
    std::string message;
};

confd_value_t text(const char* text) {
    confd_value_t value{};
    value.type = C_BUF;
    value.val.buf.ptr = reinterpret_cast<unsigned char*>(const_cast<char*>(text));
    return value;
}

confd_value_t family(int number) {
    confd_value_t value{};
    value.type = C_ENUM_VALUE;
    value.val.enumvalue = number;
    return value;
}

confd_value_t vr_id(uint8_t number) {
    confd_value_t value{};
    value.type = C_UINT8;
    value.val.u8 = number;
    return value;
}

confd_value_t ipv4(const char* address) {
    confd_value_t value{};
    value.type = C_IPV4;
    inet_pton(AF_INET, address, &value.val.ip);
    return value;
}

confd_value_t ipv6(const char* address) {
    confd_value_t value{};
    value.type = C_IPV6;
    inet_pton(AF_INET6, address, &value.val.ip6);
    return value;
}

Request request(const char* selector, Keys keys, Datastore candidate, Datastore running, int result,
                const char* message) {
    return {selector, std::move(keys), std::move(candidate), std::move(running), result, message};
}

const Keys kIpv4Instance = {{2, family(0)}, {4, text("l3-eth0")}};
const Datastore kPrimary = {{kL3 + "ipv4/address/ip", "192.0.2.1/24"}};
const Datastore kOtherPrefix = {{kL3 + "ipv4/address/ip", "192.0.2.1/25"}};
const Datastore kIpv6 = {{kL3 + "ipv6/address{2001:db8::1/64}/ip", "2001:db8::1/64"}};
const Datastore kIpv6Router = {{kVrrp + "{ipv6}/vr-id{7}/version", "3"}};

Request virtual_ipv4(const char* address, int result, const char* message) {
    return request("vrrp_ipv4_addr_validation", {{0, ipv4(address)}, {7, text("l3-eth0")}},
                   kPrimary, {}, result, message);
}

Request virtual_ipv6(const char* address, int result, const char* message) {
    return request("vrrp_l3_ipv6_addr_validation", {{0, ipv6(address)}, {7, text("l3-eth0")}},
                   kIpv6, {}, result, message);
}

Request router(int address_family, int result, const char* message) {
    return request("vrrp_vr_id_validation",
                   {{1, vr_id(7)}, {3, family(address_family)}, {5, text("l3-eth1")}}, kIpv6Router,
                   {}, result, message);
}

/// One for each type of the SDK that is unlike the platform's.
const std::vector<Request> kRequests = {
    virtual_ipv4("192.0.2.10", 0, ""),
    virtual_ipv4("198.51.100.1", -1,
                 "virtual IPv4 address must be configured on the same network as IPv4 address "
                 "192.0.2.1 netmask 255.255.255.0 on interface l3 eth0."),
    virtual_ipv4("192.0.2.255", -1,
                 "virtual IPv4 address cannot be configured as broadcast address."),
    request("vrrp_ipv4_addr_update_validation", kIpv4Instance, kOtherPrefix, kPrimary, -1,
            "IPv4 address cannot be changed on interface l3 eth0."),
    virtual_ipv6("2001:db8::10", 0, ""),
    virtual_ipv6("2001:db8::", -1, "virtual IPv6 address cannot be configured as network address."),
    request("vrrp_lower_layer_update_validation", kIpv4Instance,
            {{kL3 + "lower-layer-if/vlan", "200"}}, {{kL3 + "lower-layer-if/vlan", "100"}}, -1,
            "lower-layer cannot be changed on interface l3 eth0."),
    request("vrrp_version_validation", {}, {}, kIpv6Router, -3,
            "changing the VRRP router version will restart the VRRP router process."),
    router(0, 0, ""),
    router(1, -1,
           "cannot configure the same address-family and vr-id as 'router vrrp interface l3-eth0 "
           "address-family ipv6 vr-id 7'."),
    request("vrrp_auth_passwd_validation", {}, {}, {}, 0, ""),
};

bool answered_right(int (*validate)(confd_trans_ctx*, confd_hkeypath_t*, confd_value_t*),
                    const Request& request) {
    candidate = request.candidate;
    running = request.running;
    int handle = 0;
    confd_trans_ctx tctx{};
    tctx.validate_opaque = const_cast<char*>(request.selector.c_str());
    tctx.vcb_opaque = &handle;
    tctx.thandle = 4711;
    confd_hkeypath_t kp{};
    kp.text = "/" + kVrrp + "{ipv6}/vr-id{7}/version";
    for (const auto& [position, key] : request.keys) {
        kp.v[position][0] = key;
    }
    confd_value_t newval = text("12345678");
    const int result = validate(&tctx, &kp, &newval);
    if (result == request.result && tctx.message == request.message && open_sessions == 0) {
        return true;
    }
    std::cout << request.selector << ": " << result << " \"" << tctx.message << "\" instead of "
              << request.result << " \"" << request.message << "\", " << open_sessions
              << " sessions left open\n";
    return false;
}

}  // namespace

int main(int /*argc*/, char* argv[]) {
    void* const plugin = dlopen(argv[1], RTLD_NOW | RTLD_LOCAL);
    if (plugin == nullptr) {
        std::cout << dlerror() << '\n';
        return EXIT_FAILURE;
    }
    auto* const validate =
        reinterpret_cast<int (*)(confd_trans_ctx*, confd_hkeypath_t*, confd_value_t*)>(
            dlsym(plugin, "validate"));
    bool right = validate != nullptr;
    for (const Request& request : kRequests) {
        right = right && answered_right(validate, request);
    }
    dlclose(plugin);
    return right ? EXIT_SUCCESS : EXIT_FAILURE;
}
