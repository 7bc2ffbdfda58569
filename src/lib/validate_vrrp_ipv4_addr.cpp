#include <arpa/inet.h>

#include "handlers.h"

#include "typed_value.h"

namespace {

constexpr const char* kPrimaryAddress = "}/ipv4/address/ip";
constexpr const char* kOtherNetwork =
    "virtual IPv4 address must be configured on the same network as IPv4 address ";
constexpr const char* kCouldNotValidate =
    "Could not validate primary IPv4 address of interface l3 ";

/// The address and prefix length as ConfD delivers them, the address in network byte order.
nettypes::IPv4AddrMask addr_mask(const confd_ipv4_prefix& prefix) {
    return nettypes::IPv4AddrMask(ntohl(prefix.ip.s_addr), prefix.len);
}

}  // namespace

int32_t validate_vrrp_ipv4_addr(int32_t maapi_socket, confd_trans_ctx* tctx, confd_hkeypath_t* kp,
                                confd_value_t* /*newval*/) {
    const std::string name = l3_interface_name(BUF_TEXT(&kp->v[7][0]));
    const std::string path = l3_interface_path(name, kPrimaryAddress);
    if (maapi_exists(maapi_socket, tctx->thandle, "%s", path.c_str()) != 1) {
        set_error(tctx, concat({"IPv4 address must be configured on interface l3 ", name, "."}));
        return CONFD_ERR;
    }
    confd_ipv4_prefix read{};
    if (maapi_get_ipv4_and_plen_elem(maapi_socket, tctx->thandle, &read, "%s", path.c_str()) !=
        CONFD_OK) {
        set_error(tctx,
                  concat({"could not validate primary IPv4 address on interface l3 ", name, "."}));
        return CONFD_ERR;
    }
    const nettypes::IPv4AddrMask primary = addr_mask(read);

    // Only now: an interface without a readable address is reported before a broken binding.
    const in_addr& virtual_address = IPV4_VALUE(&kp->v[0][0]);
    const nettypes::IPv4AddrMask candidate(ntohl(virtual_address.s_addr), primary.mask_to_uint32());
    if (!candidate.Overlap(primary)) {
        set_error(tctx,
                  concat({kOtherNetwork, primary.to_string(), " on interface l3 ", name, "."}));
        return CONFD_ERR;
    }
    if (candidate.IsNetwork()) {
        set_error(tctx, "virtual IPv4 address cannot be configured as network address.");
        return CONFD_ERR;
    }
    if (candidate.IsBroadcast()) {
        set_error(tctx, "virtual IPv4 address cannot be configured as broadcast address.");
        return CONFD_ERR;
    }
    return CONFD_OK;
}

int32_t validate_vrrp_ipv4_addr_update(int32_t maapi_socket, confd_trans_ctx* tctx,
                                       confd_hkeypath_t* kp, confd_value_t* /*newval*/) {
    if (ENUM_VALUE(&kp->v[2][0]) == kAddressFamilyIpv6) {
        return CONFD_OK;
    }
    const std::string name = l3_interface_name(BUF_TEXT(&kp->v[4][0]));
    const std::string path = l3_interface_path(name, kPrimaryAddress);
    QelConfdCdbSession session(host_interface(tctx), CDB_RUNNING, true);
    if (cdb_exists(session.Socket(), "%s", path.c_str()) != 1) {
        return CONFD_OK;
    }
    if (maapi_exists(maapi_socket, tctx->thandle, "%s", path.c_str()) != 1) {
        return CONFD_OK;
    }
    confd_ipv4_prefix read{};
    if (cdb_get_ipv4_and_plen(session.Socket(), &read, "%s", path.c_str()) != CONFD_OK) {
        set_error(tctx, concat({kCouldNotValidate, name, "."}));
        return CONFD_ERR;
    }
    const nettypes::IPv4AddrMask running = addr_mask(read);
    if (maapi_get_ipv4_and_plen_elem(maapi_socket, tctx->thandle, &read, "%s", path.c_str()) !=
        CONFD_OK) {
        const char* const reason = confd_lasterr();
        set_error(tctx, concat({kCouldNotValidate, name, ".", reason == nullptr ? "" : reason}));
        return CONFD_ERR;
    }
    const nettypes::IPv4AddrMask candidate = addr_mask(read);
    if (candidate != running) {
        set_error(tctx, concat({"IPv4 address cannot be changed on interface l3 ", name, "."}));
        return CONFD_ERR;
    }
    return CONFD_OK;
}
