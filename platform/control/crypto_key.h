/// Encrypted leaves.
#pragma once

#include <array>
#include <cstddef>
#include <string>
#include <string_view>

namespace local_platform {

/// The key of encrypted leaves, AES-256. Wiped when it goes.
class CryptoKey {
  public:
    static constexpr std::size_t kSize = 32;

    /// A fresh random key.
    CryptoKey();
    explicit CryptoKey(const std::array<unsigned char, kSize>& bytes) : bytes_(bytes) {}
    CryptoKey(const CryptoKey&) = default;
    CryptoKey& operator=(const CryptoKey&) = default;
    ~CryptoKey();

    const std::array<unsigned char, kSize>& bytes() const { return bytes_; }

  private:
    std::array<unsigned char, kSize> bytes_{};
};

/// The printable text that confd_decrypt() opens with `key`.
std::string encrypt(const CryptoKey& key, std::string_view clear_text);

}  // namespace local_platform
