#include <list>

#include "get_key_list.h"
#include "handlers.h"

#include "typed_value.h"

int32_t validate_vrrp_l3_ipv6_addr(int32_t maapi_socket, confd_trans_ctx* tctx,
                                   confd_hkeypath_t* kp, confd_value_t* /*newval*/) {
    const std::string name = l3_interface_name(BUF_TEXT(&kp->v[7][0]));
    const std::string list_path = l3_interface_path(name, "}/ipv6/address");
    if (maapi_exists(maapi_socket, tctx->thandle, "%s", list_path.c_str()) != 1 ||
        maapi_num_instances(maapi_socket, tctx->thandle, "%s", list_path.c_str()) < 1) {
        set_error(tctx, concat({"IPv6 address must be configured on interface l3 ", name, "."}));
        return CONFD_ERR;
    }
    const std::list<std::string> keys = get_key_list(maapi_socket, tctx, list_path);

    // Only now: an interface without addresses is reported before a broken binding.
    const in6_addr& virtual_address = IPV6_VALUE(&kp->v[0][0]);

    std::list<nettypes::IPv6AddrMask> interface_addresses;
    for (const std::string& key : keys) {
        const std::string path = concat({list_path, "{", key, "}/ip"});
        confd_ipv6_prefix read{};
        if (maapi_get_ipv6_and_plen_elem(maapi_socket, tctx->thandle, &read, "%s", path.c_str()) !=
            CONFD_OK) {
            set_error(tctx,
                      concat({"could not validate IPv6 address on interface l3 ", name, "."}));
            return CONFD_ERR;
        }
        interface_addresses.emplace_back(read.ip6, read.len, nettypes::MACAddr());
    }

    // Every address is looked at, also after a match: the virtual address may not be the network
    // address under any prefix that holds it.
    bool found = false;
    for (const nettypes::IPv6AddrMask& address : interface_addresses) {
        const nettypes::IPv6AddrMask candidate(virtual_address, address.GetPrefixLength(),
                                               nettypes::MACAddr());
        if (!candidate.Overlap(address)) {
            continue;
        }
        if (candidate.IsNetwork()) {
            set_error(tctx, "virtual IPv6 address cannot be configured as network address.");
            return CONFD_ERR;
        }
        found = true;
    }
    if (!found) {
        set_error(tctx,
                  concat({"virtual IPv6 address must be configured on the same network as one "
                          "of the IPv6 addresses on interface l3 ",
                          name, "."}));
        return CONFD_ERR;
    }
    return CONFD_OK;
}

int32_t validate_vrrp_l3_ipv6_link_local_addr(int32_t maapi_socket, confd_trans_ctx* tctx,
                                              confd_hkeypath_t* kp, confd_value_t* /*newval*/) {
    const std::string name = l3_interface_name(BUF_TEXT(&kp->v[5][0]));
    const std::string path = l3_interface_path(name, "}/ipv6/enable");
    int enabled = 0;
    if (maapi_exists(maapi_socket, tctx->thandle, "%s", path.c_str()) == 1 &&
        maapi_get_bool_elem(maapi_socket, tctx->thandle, &enabled, "%s", path.c_str()) !=
            CONFD_OK) {
        return CONFD_ERR;
    }
    if (enabled == 0) {
        set_error(tctx, concat({"IPv6 must be enabled on interface l3 ", name, "."}));
        return CONFD_ERR;
    }
    return CONFD_OK;
}
