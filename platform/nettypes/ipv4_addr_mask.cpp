#include "nettypes/ipv4_addr_mask.h"

#include <arpa/inet.h>

#include <algorithm>
#include <array>
#include <stdexcept>

namespace nettypes {
namespace {

constexpr unsigned int kMaxPrefixLength = 32;
/// Longer prefixes leave no room for a network and a broadcast address (RFC 3021).
constexpr unsigned int kMaxSubnetPrefixLength = 30;

/// The bits after the prefix; a shift by the whole width would be undefined.
unsigned int host_bits(unsigned int prefix_length) {
    return prefix_length == kMaxPrefixLength ? 0U : ~0U >> prefix_length;
}

}  // namespace

IPv4AddrMask::IPv4AddrMask(unsigned int address, unsigned int mask)
    : address_(address), prefix_length_(mask) {
    if (mask > kMaxPrefixLength) {
        throw std::invalid_argument("IPv4 prefix length above 32");
    }
}

unsigned int IPv4AddrMask::mask_to_uint32() const {
    return prefix_length_;
}

bool IPv4AddrMask::Overlap(const IPv4AddrMask& other) const {
    const unsigned int host = host_bits(std::min(prefix_length_, other.prefix_length_));
    return ((address_ ^ other.address_) & ~host) == 0;
}

bool IPv4AddrMask::IsNetwork() const {
    return prefix_length_ <= kMaxSubnetPrefixLength && (address_ & host_bits(prefix_length_)) == 0;
}

bool IPv4AddrMask::IsBroadcast() const {
    return prefix_length_ <= kMaxSubnetPrefixLength && (~address_ & host_bits(prefix_length_)) == 0;
}

bool IPv4AddrMask::operator==(const IPv4AddrMask& other) const {
    return address_ == other.address_ && prefix_length_ == other.prefix_length_;
}

bool IPv4AddrMask::operator!=(const IPv4AddrMask& other) const {
    return !(*this == other);
}

std::string IPv4AddrMask::to_string() const {
    const in_addr address{htonl(address_)};
    std::array<char, INET_ADDRSTRLEN> text{};
    return std::string(inet_ntop(AF_INET, &address, text.data(), text.size())) + "/" +
           std::to_string(prefix_length_);
}

}  // namespace nettypes
