#include <arpa/inet.h>
#include <gtest/gtest.h>

#include <stdexcept>

#include "nettypes/ipv4_addr_mask.h"
#include "nettypes/ipv6_addr_mask.h"

using nettypes::IPv4AddrMask;
using nettypes::IPv6AddrMask;

namespace {

IPv6AddrMask ipv6(const char* text, unsigned char length) {
    in6_addr address{};
    inet_pton(AF_INET6, text, &address);
    return {address, length, nettypes::MACAddr()};
}

TEST(AddressTypes, AtTheirEdges) {
    const IPv4AddrMask host(0xc000024d, 24);
    const IPv4AddrMask wide(0xc0000001, 16);
    EXPECT_EQ(host.to_string(), "192.0.2.77/24");
    EXPECT_NE(IPv4AddrMask(0xc000024d, 25), host);
    EXPECT_TRUE(wide.Overlap(host) && host.Overlap(wide)) << "under the shorter prefix";
    EXPECT_FALSE(host.Overlap(IPv4AddrMask(0xc000034d, 25)));
    EXPECT_TRUE(IPv4AddrMask(0, 0).IsNetwork() && IPv4AddrMask(0xc0000207, 30).IsBroadcast());
    EXPECT_FALSE(IPv4AddrMask(0xc0000204, 31).IsNetwork() || IPv4AddrMask(~0U, 32).IsBroadcast());
    EXPECT_THROW(IPv4AddrMask(0, 33), std::invalid_argument);

    const IPv6AddrMask odd = ipv6("2001:db8:8000::1", 33);
    EXPECT_TRUE(ipv6("2001:db8::1", 32).Overlap(odd) && odd.Overlap(ipv6("2001:db8::1", 32)));
    EXPECT_FALSE(odd.Overlap(ipv6("2001:db8::1", 33)));
    EXPECT_TRUE(ipv6("2001:db8:8000::", 33).IsNetwork() && ipv6("::2", 127).IsNetwork());
    EXPECT_FALSE(ipv6("2001:db8:8000::", 32).IsNetwork() || ipv6("::2", 128).IsNetwork());
    EXPECT_THROW(ipv6("::", 129), std::invalid_argument);
}

}  // namespace
