#include <arpa/inet.h>
#include <nettypes/ipv4_addr_mask.h>
#include <nettypes/ipv6_addr_mask.h>

#include <algorithm>
#include <bitset>

namespace nettypes {
namespace {

std::string dotted(unsigned int address) {
    const in_addr network_order{htonl(address)};
    char text[INET_ADDRSTRLEN];
    return inet_ntop(AF_INET, &network_order, text, sizeof text);
}

std::bitset<128> bits(const in6_addr& address) {
    std::bitset<128> bits;
    for (const unsigned char byte : address.s6_addr) {
        bits = bits << 8 | std::bitset<128>(byte);
    }
    return bits;
}

}  // namespace

IPv4AddrMask::IPv4AddrMask(unsigned int address, unsigned int mask)
    : netmask_(mask > 32 ? mask : static_cast<unsigned int>(~0ULL << (32 - mask))),
      address_(address) {}

unsigned int IPv4AddrMask::mask_to_uint32() const {
    return netmask_;
}

bool IPv4AddrMask::Overlap(IPv4AddrMask const& other) const {
    return ((address_ ^ other.address_) & netmask_ & other.netmask_) == 0;
}

bool IPv4AddrMask::IsNetwork() const {
    return (address_ & ~netmask_) == 0;
}

bool IPv4AddrMask::IsBroadcast() const {
    return (~address_ & ~netmask_) == 0;
}

bool IPv4AddrMask::operator!=(IPv4AddrMask const& other) const {
    return address_ != other.address_ || netmask_ != other.netmask_;
}

std::string IPv4AddrMask::to_string() const {
    return dotted(address_) + " netmask " + dotted(netmask_);
}

MACAddr::MACAddr() : bytes_() {}

IPv6AddrMask::IPv6AddrMask(in6_addr const& addr, unsigned char prefix_len, MACAddr const& mac)
    : mac_(mac), prefix_len_(prefix_len), addr_(addr) {}

IPv6AddrMask::~IPv6AddrMask() = default;

unsigned char IPv6AddrMask::GetPrefixLength() const {
    return prefix_len_;
}

bool IPv6AddrMask::Overlap(IPv6AddrMask const& other) const {
    return ((bits(addr_) ^ bits(other.addr_)) >> (128 - std::min(prefix_len_, other.prefix_len_)))
        .none();
}

bool IPv6AddrMask::IsNetwork() const {
    return (bits(addr_) << prefix_len_).none();
}

}  // namespace nettypes
