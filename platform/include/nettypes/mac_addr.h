/// libnettypes: a MAC address.
#pragma once

#include <array>
#include <cstdint>

namespace nettypes {

/// Six bytes, first on the wire first; all zero unless given.
class MACAddr {
  public:
    MACAddr() = default;
    explicit MACAddr(const std::array<uint8_t, 6>& bytes) : bytes_(bytes) {}

    const std::array<uint8_t, 6>& bytes() const { return bytes_; }

  private:
    std::array<uint8_t, 6> bytes_{};
};

}  // namespace nettypes
