#include "crypto.h"

#include <openssl/crypto.h>
#include <openssl/evp.h>
#include <openssl/rand.h>

#include <mutex>
#include <optional>

#include "crypto_key.h"
#include "endpoint.h"
#include "hook.h"
#include "platform_error.h"

namespace local_platform {
namespace {

/// Encrypted text is this mark and then, in base64: nonce, cipher text, tag.
constexpr std::string_view kMark = "$aes-256-gcm$";
constexpr std::size_t kNonceSize = 12;
constexpr std::size_t kTagSize = 16;

struct ContextDeleter {
    void operator()(EVP_CIPHER_CTX* context) const { EVP_CIPHER_CTX_free(context); }
};
using CipherContext = std::unique_ptr<EVP_CIPHER_CTX, ContextDeleter>;

std::mutex installed_key_mutex;
std::optional<CryptoKey> installed_key;

std::optional<CryptoKey> copy_of_installed_key() {
    const std::lock_guard<std::mutex> lock(installed_key_mutex);
    return installed_key;
}

const unsigned char* bytes_of(std::string_view text) {
    return reinterpret_cast<const unsigned char*>(text.data());
}

std::string base64(const std::string& bytes) {
    std::string text(4 * ((bytes.size() + 2) / 3) + 1, '\0');
    const int length = EVP_EncodeBlock(reinterpret_cast<unsigned char*>(text.data()),
                                       bytes_of(bytes), static_cast<int>(bytes.size()));
    text.resize(static_cast<std::size_t>(length));
    return text;
}

/// The bytes that the base64 `text` stands for; nothing when it is none. Only its one canonical
/// form is taken: what EVP_DecodeBlock() overlooks would make two texts of one.
std::optional<std::string> from_base64(std::string_view text) {
    if (text.empty() || text.size() % 4 != 0) {
        return std::nullopt;
    }
    std::string bytes(text.size() / 4 * 3, '\0');
    const int length = EVP_DecodeBlock(reinterpret_cast<unsigned char*>(bytes.data()),
                                       bytes_of(text), static_cast<int>(text.size()));
    if (length < 0) {
        return std::nullopt;
    }
    const std::size_t padding = text.size() - std::min(text.find_last_not_of('=') + 1, text.size());
    if (padding > 2) {
        return std::nullopt;
    }
    bytes.resize(bytes.size() - padding);
    return base64(bytes) == text ? std::optional(bytes) : std::nullopt;
}

/// Opens nonce, cipher text and tag in `sealed` into `output`, which has room for the cipher text.
/// Whatever was written is wiped again when the tag does not fit.
bool open_sealed(const CryptoKey& key, const std::string& sealed, unsigned char* output) {
    const std::size_t clear_size = sealed.size() - kNonceSize - kTagSize;
    const unsigned char* const nonce = bytes_of(sealed);
    std::string tag = sealed.substr(kNonceSize + clear_size);
    const CipherContext context(EVP_CIPHER_CTX_new());
    int written = 0;
    int last = 0;
    const bool opened =
        context != nullptr &&
        EVP_DecryptInit_ex(context.get(), EVP_aes_256_gcm(), nullptr, key.bytes().data(), nonce) ==
            1 &&
        EVP_DecryptUpdate(context.get(), output, &written, nonce + kNonceSize,
                          static_cast<int>(clear_size)) == 1 &&
        EVP_CIPHER_CTX_ctrl(context.get(), EVP_CTRL_GCM_SET_TAG, kTagSize, tag.data()) == 1 &&
        EVP_DecryptFinal_ex(context.get(), output + written, &last) == 1;
    if (!opened) {
        OPENSSL_cleanse(output, clear_size);
    }
    return opened;
}

int decrypt(std::string_view text, char* output) {
    const std::optional<CryptoKey> key = copy_of_installed_key();
    if (!key) {
        return fail("no key is installed");
    }
    if (text.substr(0, kMark.size()) != kMark) {
        return fail("no encrypted text");
    }
    const std::optional<std::string> sealed = from_base64(text.substr(kMark.size()));
    if (!sealed || sealed->size() < kNonceSize + kTagSize) {
        return fail("no encrypted text");
    }
    if (!open_sealed(*key, *sealed, reinterpret_cast<unsigned char*>(output))) {
        return fail("the encrypted text was not made with the installed key");
    }
    output[sealed->size() - kNonceSize - kTagSize] = '\0';
    return CONFD_OK;
}

}  // namespace

CryptoKey::CryptoKey() {
    if (RAND_bytes(bytes_.data(), static_cast<int>(bytes_.size())) != 1) {
        throw PlatformError("no random bytes for a key");
    }
}

CryptoKey::~CryptoKey() {
    OPENSSL_cleanse(bytes_.data(), bytes_.size());
}

std::string encrypt(const CryptoKey& key, std::string_view clear_text) {
    std::string sealed(kNonceSize + clear_text.size() + kTagSize, '\0');
    auto* const nonce = reinterpret_cast<unsigned char*>(sealed.data());
    unsigned char* const output = nonce + kNonceSize;
    const CipherContext context(EVP_CIPHER_CTX_new());
    int written = 0;
    int last = 0;
    const bool encrypted = context != nullptr && RAND_bytes(nonce, kNonceSize) == 1 &&
                           EVP_EncryptInit_ex(context.get(), EVP_aes_256_gcm(), nullptr,
                                              key.bytes().data(), nonce) == 1 &&
                           EVP_EncryptUpdate(context.get(), output, &written, bytes_of(clear_text),
                                             static_cast<int>(clear_text.size())) == 1 &&
                           EVP_EncryptFinal_ex(context.get(), output + written, &last) == 1 &&
                           EVP_CIPHER_CTX_ctrl(context.get(), EVP_CTRL_GCM_GET_TAG, kTagSize,
                                               output + clear_text.size()) == 1;
    if (!encrypted) {
        throw PlatformError("the password could not be encrypted");
    }
    return std::string(kMark) + base64(sealed);
}

int install_key_of(int sock) {
    const Endpoint* const endpoint = find_socket(sock, Endpoint::Kind::maapi);
    const std::lock_guard<std::mutex> lock(installed_key_mutex);
    installed_key = endpoint == nullptr ? std::nullopt : endpoint->key;
    return installed_key ? CONFD_OK : fail("the host has no key for encrypted leaves");
}

}  // namespace local_platform

int confd_decrypt(const char* ciphertext, int len, char* output) {
    return local_platform::serve("confd_decrypt", -1, std::string_view(), [&] {
        return local_platform::decrypt({ciphertext, static_cast<std::size_t>(len)}, output);
    });
}
