#include "rule.h"

namespace {

const std::string kAddress = kL3 + "/ipv4/address/ip";
const std::string kExists = "maapi_exists " + kAddress;
const std::string kGet = "maapi_get_ipv4_and_plen_elem " + kAddress;

/// The primary address of the interface.
Candidate primary(const std::string& address) {
    return {{kAddress, address}};
}
const Answer kMissing = error("IPv4 address must be configured on interface l3 vlan%s%n.");
const Answer kUnread = error("could not validate primary IPv4 address on interface l3 vlan%s%n.");
const Answer kNetwork = error("virtual IPv4 address cannot be configured as network address.");
const Answer kBroadcast = error("virtual IPv4 address cannot be configured as broadcast address.");
Answer outside(const std::string& network) {
    return error("virtual IPv4 address must be configured on the same network as IPv4 address " +
                 network + " on interface l3 vlan%s%n.");
}
const Calls kReads = {Calls(kExists).fails(kMissing), Calls(kGet).fails(kUnread)};

/// Asks about the virtual address `ip` on an interface with the address `own`.
template <typename... Parts>
Case asks(const std::string& name, const std::string& ip, const std::string& own,
          const Parts&... parts) {
    return Case(name, own.empty() ? Candidate() : primary(own),
                Request{kIpv4Instance + "/address/ipv4{" + ip + "}"}, parts...);
}

const AddRule kAddressRule(
    "vrrp_ipv4_addr_validation", "validate_vrrp_ipv4_addr", {{7, "C_BUF"}, {0, "C_IPV4"}},
    {
        asks("within the network", "192.0.2.10", "192.0.2.1/24", ok(), kReads),
        asks("outside", "10.0.0.10", "192.0.2.1/24", outside("192.0.2.1/24"),
             Calls{kReads, kSetError}),
        asks("network", "192.0.2.0", "192.0.2.77/24", kNetwork),
        asks("broadcast", "192.0.2.255", "192.0.2.1/24", kBroadcast),
        asks("broadcast of 16 bits", "10.1.255.255", "10.1.2.3/16", kBroadcast),
        asks("broadcast of 24 in 16 bits", "10.1.200.255", "10.1.2.3/16", ok()),
        asks("next 30 bits", "10.1.2.4", "10.1.2.3/30", outside("10.1.2.3/30")),
        asks("no bits", "0.0.0.0", "10.1.2.3/0", kNetwork),
        asks("32 bits", "192.0.2.4", "192.0.2.4/32", ok()),
        asks("31 bits", "192.0.2.5", "192.0.2.4/31", ok()),
        asks("no primary address before a wrong key", "192.0.2.1", "", WrongType{0}, kMissing,
             Calls{kExists, kSetError}),
    });

const std::string kUpdateUnread =
    "Could not validate primary IPv4 address of interface l3 vlan%s%n.";
const Answer kChanged = error("IPv4 address cannot be changed on interface l3 vlan%s%n.");
const Running kCommitted = {{kAddress, "192.0.2.1/24"}};
const Calls kLooks = {kOpenSession, kSocket.fails_unseen(ok()),
                      Calls("cdb_exists " + kAddress).fails(ok())};
const Calls kUpdateReads = {kLooks, Calls(kExists).fails(ok()),
                            kSocket.fails_unseen(error(kUpdateUnread)),
                            Calls("cdb_get_ipv4_and_plen " + kAddress).fails(error(kUpdateUnread)),
                            Calls(kGet).fails(error(kUpdateUnread + "why"))};

const AddRule kUpdateRule(
    "vrrp_ipv4_addr_update_validation", "validate_vrrp_ipv4_addr_update",
    {{2, "C_ENUM_VALUE"}, {4, "C_BUF"}},
    {
        Case("address kept", primary("192.0.2.1/24"), kCommitted, ok(),
             Calls{kUpdateReads, kCloseSession}),
        Case("address changed", primary("192.0.2.2/24"), kCommitted, kChanged,
             Calls{kUpdateReads, kSetError, kCloseSession}),
        Case("address changed beside an IPv6 instance", primary("10.0.0.1/8"), kCommitted,
             Request{kIpv6Instance}, WrongType{4}, ok(), kNoCalls),
        Case("prefix changed", primary("192.0.2.1/25"), kCommitted, kChanged),
        Case("first address", primary("192.0.2.1/24"), ok(), Calls{kLooks, kCloseSession}),
        Case("address removed", kCommitted, ok(), Calls{kLooks, kExists, kCloseSession}),
        Case("address gone between two reads", kCommitted, PlatformAnswers{{"maapi_exists", 1}},
             error(kUpdateUnread + "the leaf does not exist: " + kAddress)),
        Case("failed read without a reason", kCommitted,
             PlatformAnswers{{"maapi_exists", 1}, {"confd_lasterr", 0}}, error(kUpdateUnread)),
    });

}  // namespace
