#include "rule_request.h"

#include <stdexcept>

#include "keypath.h"
#include "vrrp_valid.h"

namespace {

struct Place {
    const char* selector;
    const char* path;
};

#define IPV4_INSTANCE "/router/vrrp/interface{l3-vlan1}/address-family{ipv4}/vr-id{1}"
#define IPV6_INSTANCE "/router/vrrp/interface{l3-vlan2}/address-family{ipv6}/vr-id{1}"
constexpr Place kPlaces[] = {
    {"vrrp_auth_passwd_validation", IPV4_INSTANCE "/authentication/simple-text-password"},
    {"vrrp_ipv4_addr_validation", IPV4_INSTANCE "/address/ipv4{10.0.0.1}"},
    {"vrrp_ipv4_addr_update_validation", IPV4_INSTANCE},
    {"vrrp_l3_ipv6_addr_validation", IPV6_INSTANCE "/address/ipv6{2001:db8:2::1}"},
    {"vrrp_l3_ipv6_link_local_addr_validation", IPV6_INSTANCE "/address-link-local"},
    {"vrrp_ipv6_link_local_addr_validation", IPV6_INSTANCE},
    {"vrrp_lower_layer_validation", IPV4_INSTANCE},
    {"vrrp_lower_layer_update_validation", IPV4_INSTANCE},
    {"vrrp_secondary_ipv4_addr_validation", IPV4_INSTANCE},
    {"vrrp_version_validation", IPV4_INSTANCE "/version"},
    {"vrrp_vr_id_validation", IPV4_INSTANCE "/id"},
    {"vrrp_vrf_validation", IPV4_INSTANCE},
};

}  // namespace

std::vector<RuleRequest> rule_requests(const local_platform::DataTree& candidate,
                                       const local_platform::Instance& instance) {
    std::vector<RuleRequest> requests;
    for (const Place& place : kPlaces) {
        const local_platform::Node* const node = candidate.find(place.path);
        if (node == nullptr) {
            throw std::runtime_error(std::string("the workload lacks ") + place.path);
        }
        RuleRequest request{place.selector, {}, {}, node->value()};
        request.tctx.thandle = instance.thandle();
        request.tctx.vcb_opaque = instance.handle();
        request.tctx.validate_opaque = const_cast<char*>(place.selector);
        local_platform::fill_keypath(*node, request.kp);
        requests.push_back(std::move(request));
    }
    return requests;
}

void make_request(RuleRequest& request) {
    if (validate(&request.tctx, &request.kp, &request.newval) != CONFD_OK) {
        throw std::runtime_error(request.selector + " does not pass");
    }
}
