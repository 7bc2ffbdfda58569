/// Encrypted leaves.
#pragma once

#include <array>
#include <cstddef>
#include <string>
#include <string_view>

#pragma GCC visibility push(default)

namespace local_platform {

/// The key of encrypted leaves, AES-256. Wiped when it goes.
class CryptoKey {
  public:
    static constexpr std::size_t kSize = 32;

    /// A fresh random key.
    CryptoKey();
    explicit CryptoKey(const std::array<unsigned char, kSize>& bytes);
    CryptoKey(const CryptoKey& other);
    CryptoKey& operator=(const CryptoKey& other);
    ~CryptoKey();

    const std::array<unsigned char, kSize>& bytes() const { return bytes_; }

  private:
    void copy(const std::array<unsigned char, kSize>& bytes);

    std::array<unsigned char, kSize> bytes_{};
};

/// The printable text that confd_decrypt() opens with `key`.
std::string encrypt(const CryptoKey& key, std::string_view clear_text);

}  // namespace local_platform

#pragma GCC visibility pop
