/// libnettypes: an IPv6 address under a prefix.
#pragma once

#include <netinet/in.h>

#include "nettypes/mac_addr.h"

namespace nettypes {

/// An IPv6 address and its prefix length. The host bits are kept as given.
class IPv6AddrMask {
  public:
    /// `addr` in network byte order, `prefix_len` 0 to 128. Throws std::invalid_argument for a
    /// longer one. The MAC address is part of the interface only: nothing here depends on it.
    IPv6AddrMask(const in6_addr& addr, unsigned char prefix_len, const MACAddr& mac);
    IPv6AddrMask(const IPv6AddrMask&) = default;
    IPv6AddrMask& operator=(const IPv6AddrMask&) = default;
    virtual ~IPv6AddrMask();

    virtual unsigned char GetPrefixLength() const;

    /// Whether the two networks share addresses.
    bool Overlap(const IPv6AddrMask& other) const;

    /// Whether every bit after the prefix is zero. Never at /128, where the one address is a
    /// host's.
    bool IsNetwork() const;

  private:
    in6_addr addr_;
    unsigned char prefix_len_;
};

}  // namespace nettypes
