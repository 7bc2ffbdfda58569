#include "reports/fingerprint.h"

#include <nettle/sha2.h>

#include <array>
#include <filesystem>

#include "text/hex.h"

std::string fingerprint(const std::string& candidate, const Finding& finding) {
    std::string whole;
    for (const std::string& text :
         {repository_path(candidate), finding.rule, finding.path, finding.message}) {
        whole.append(text).push_back('\0');
    }
    return sha256(whole);
}

std::string sha256(std::string_view bytes) {
    sha256_ctx context{};
    sha256_init(&context);
    sha256_update(&context, bytes.size(), reinterpret_cast<const unsigned char*>(bytes.data()));
    std::array<unsigned char, SHA256_DIGEST_SIZE> digest{};
    sha256_digest(&context, digest.size(), digest.data());
    std::string digits;
    for (const unsigned char byte : digest) {
        digits += hex(byte, 2);
    }
    return digits;
}

std::string repository_path(const std::string& file) {
    return std::filesystem::path(file).lexically_normal().string();
}
