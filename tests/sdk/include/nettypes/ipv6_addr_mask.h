#pragma once

#include <netinet/in.h>

#include <nettypes/mac_addr.h>

namespace nettypes {

class IPv6AddrMask {
  public:
    explicit IPv6AddrMask(in6_addr const& addr, unsigned char prefix_len, MACAddr const& mac);
    virtual ~IPv6AddrMask();
    virtual unsigned char GetPrefixLength() const;
    bool Overlap(IPv6AddrMask const& other) const;
    bool IsNetwork() const;

  private:
    MACAddr mac_;
    unsigned char prefix_len_;
    in6_addr addr_;
};

}  // namespace nettypes
