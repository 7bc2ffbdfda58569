#include "crypto.h"

#include <nettle/base64.h>
#include <nettle/gcm.h>
#include <nettle/memops.h>
#include <sys/random.h>

#include <cstring>
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

const unsigned char* bytes_of(std::string_view text) {
    return reinterpret_cast<const unsigned char*>(text.data());
}

void fill_randomly(void* bytes, std::size_t size) {
    if (getentropy(bytes, size) != 0) {
        throw PlatformError("the system gives no random bytes");
    }
}

/// One text under AES-256-GCM. Wiped when it goes.
struct Cipher {
    Cipher(const CryptoKey& key, const unsigned char* nonce) {
        gcm_aes256_set_key(&context, key.bytes().data());
        gcm_aes256_set_iv(&context, kNonceSize, nonce);
    }
    Cipher(const Cipher&) = delete;
    Cipher& operator=(const Cipher&) = delete;
    ~Cipher() { explicit_bzero(&context, sizeof context); }

    gcm_aes256_ctx context{};
};

std::mutex installed_key_mutex;
std::optional<CryptoKey> installed_key;

std::optional<CryptoKey> copy_of_installed_key() {
    const std::lock_guard<std::mutex> lock(installed_key_mutex);
    return installed_key;
}

std::string base64(const std::string& bytes) {
    std::string text(BASE64_ENCODE_RAW_LENGTH(bytes.size()), '\0');
    base64_encode_raw(text.data(), bytes.size(), bytes_of(bytes));
    return text;
}

/// The bytes that the base64 `text` stands for; nothing when it is none. Only its one canonical
/// form is taken: what the decoder overlooks would make two texts of one.
std::optional<std::string> from_base64(std::string_view text) {
    base64_decode_ctx decoder{};
    base64_decode_init(&decoder);
    std::string bytes(BASE64_DECODE_LENGTH(text.size()), '\0');
    std::size_t size = bytes.size();
    if (base64_decode_update(&decoder, &size, reinterpret_cast<unsigned char*>(bytes.data()),
                             text.size(), text.data()) != 1 ||
        base64_decode_final(&decoder) != 1) {
        return std::nullopt;
    }
    bytes.resize(size);
    return base64(bytes) == text ? std::optional(bytes) : std::nullopt;
}

/// Opens nonce, cipher text and tag in `sealed` into `output`, which has room for the cipher text.
/// Whatever was written is wiped again when the tag does not fit.
bool open_sealed(const CryptoKey& key, std::string_view sealed, unsigned char* output) {
    const std::size_t clear_size = sealed.size() - kNonceSize - kTagSize;
    std::array<unsigned char, kTagSize> tag{};
    Cipher cipher(key, bytes_of(sealed));
    const unsigned char* const encrypted = bytes_of(sealed) + kNonceSize;
    gcm_aes256_decrypt(&cipher.context, clear_size, output, encrypted);
    gcm_aes256_digest(&cipher.context, kTagSize, tag.data());
    const bool is_whole = memeql_sec(tag.data(), encrypted + clear_size, kTagSize) == 1;
    if (!is_whole) {
        explicit_bzero(output, clear_size);
    }
    return is_whole;
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
    fill_randomly(bytes_.data(), bytes_.size());
}

CryptoKey::~CryptoKey() {
    explicit_bzero(bytes_.data(), bytes_.size());
}

std::string encrypt(const CryptoKey& key, std::string_view clear_text) {
    std::string sealed(kNonceSize + clear_text.size() + kTagSize, '\0');
    auto* const nonce = reinterpret_cast<unsigned char*>(sealed.data());
    fill_randomly(nonce, kNonceSize);
    Cipher cipher(key, nonce);
    unsigned char* const output = nonce + kNonceSize;
    gcm_aes256_encrypt(&cipher.context, clear_text.size(), output, bytes_of(clear_text));
    gcm_aes256_digest(&cipher.context, kTagSize, output + clear_text.size());
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
    return local_platform::serve("confd_decrypt", -1, {}, [&] {
        return local_platform::decrypt({ciphertext, static_cast<std::size_t>(len)}, output);
    });
}
