/// What a platform call costs on a router at the least: one small message to another thread and
/// back.
#pragma once

#include <thread>

class RoundTrip {
  public:
    RoundTrip();
    ~RoundTrip();
    RoundTrip(const RoundTrip&) = delete;
    RoundTrip& operator=(const RoundTrip&) = delete;

    void make();

  private:
    int ends_[2];
    std::thread echo_;
};
