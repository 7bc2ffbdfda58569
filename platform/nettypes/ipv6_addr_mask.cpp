#include "nettypes/ipv6_addr_mask.h"

#include <algorithm>
#include <cstdint>
#include <stdexcept>

namespace nettypes {
namespace {

constexpr int kMaxPrefixLength = 128;

/// The bits of byte `index` that lie after the prefix.
uint8_t host_bits(int prefix_length, int index) {
    return static_cast<uint8_t>(0xff >> std::clamp(prefix_length - 8 * index, 0, 8));
}

}  // namespace

IPv6AddrMask::IPv6AddrMask(const in6_addr& addr, unsigned char prefix_len, const MACAddr& /*mac*/)
    : addr_(addr), prefix_len_(prefix_len) {
    if (prefix_len > kMaxPrefixLength) {
        throw std::invalid_argument("IPv6 prefix length above 128");
    }
}

IPv6AddrMask::~IPv6AddrMask() = default;

unsigned char IPv6AddrMask::GetPrefixLength() const {
    return prefix_len_;
}

bool IPv6AddrMask::Overlap(const IPv6AddrMask& other) const {
    const int prefix_length = std::min(prefix_len_, other.prefix_len_);
    for (int i = 0; 8 * i < prefix_length; ++i) {
        const int differing = addr_.s6_addr[i] ^ other.addr_.s6_addr[i];
        if ((differing & ~host_bits(prefix_length, i)) != 0) {
            return false;
        }
    }
    return true;
}

bool IPv6AddrMask::IsNetwork() const {
    if (prefix_len_ == kMaxPrefixLength) {
        return false;
    }
    for (int i = prefix_len_ / 8; i < 16; ++i) {
        if ((addr_.s6_addr[i] & host_bits(prefix_len_, i)) != 0) {
            return false;
        }
    }
    return true;
}

}  // namespace nettypes
