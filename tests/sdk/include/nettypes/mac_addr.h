#pragma once

namespace nettypes {

class MACAddr {
  public:
    MACAddr();

  private:
    unsigned char bytes_[8];
};

}  // namespace nettypes
