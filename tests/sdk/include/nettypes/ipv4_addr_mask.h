/// An address type that keeps the netmask's bits, whose constructor is explicit.
#pragma once

#include <string>

namespace nettypes {

class IPv4AddrMask {
  public:
    explicit IPv4AddrMask(unsigned int address, unsigned int mask = 32);
    unsigned int mask_to_uint32() const;
    bool Overlap(IPv4AddrMask const& other) const;
    bool IsNetwork() const;
    bool IsBroadcast() const;
    bool operator!=(IPv4AddrMask const& other) const;
    std::string to_string() const;

  private:
    unsigned int netmask_;
    unsigned int address_;
};

}  // namespace nettypes
