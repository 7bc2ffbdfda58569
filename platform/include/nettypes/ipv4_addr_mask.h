/// libnettypes: an IPv4 address under a prefix.
#pragma once

#include <string>

namespace nettypes {

/// An IPv4 address and its prefix length. The host bits are kept as given.
class IPv4AddrMask {
  public:
    /// `address` in host byte order, the first octet in the most significant byte; `mask` the
    /// prefix length, 0 to 32. Throws std::invalid_argument for a longer one.
    IPv4AddrMask(unsigned int address, unsigned int mask);

    /// The mask in the form that the constructor takes: the prefix length.
    unsigned int mask_to_uint32() const;

    /// Whether the two networks share addresses.
    bool Overlap(const IPv4AddrMask& other) const;

    /// Whether every bit after the prefix is zero. Never at /31 and /32, where every address is a
    /// host's (RFC 3021).
    bool IsNetwork() const;

    /// Whether every bit after the prefix is one. Never at /31 and /32.
    bool IsBroadcast() const;

    bool operator==(const IPv4AddrMask& other) const;
    bool operator!=(const IPv4AddrMask& other) const;

    /// "192.0.2.1/24".
    std::string to_string() const;

  private:
    unsigned int address_;
    unsigned int prefix_length_;
};

}  // namespace nettypes
