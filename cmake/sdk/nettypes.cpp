/// What the plug-in uses of libnettypes. Built when the tree is configured for a router SDK, and
/// never run.
#include "platform.h"

#include <string>

int main() {
    unsigned char const length = 24;
    const nettypes::IPv4AddrMask primary(1U, length);
    const nettypes::IPv4AddrMask ipv4(2U, primary.mask_to_uint32());
    const std::string text = ipv4.to_string();
    in6_addr const address{};
    const nettypes::IPv6AddrMask ipv6(address, length, nettypes::MACAddr());
    return (ipv4.Overlap(primary) && ipv4.IsNetwork() && ipv4.IsBroadcast() && ipv4 != primary) +
           (ipv6.Overlap(ipv6) && ipv6.IsNetwork() && ipv6.GetPrefixLength() == 1) +
           static_cast<int>(text.size());
}
