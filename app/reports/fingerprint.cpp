#include "reports/fingerprint.h"

#include <nettle/sha2.h>

#include <array>
#include <filesystem>
#include <initializer_list>

#include "text/hex.h"

namespace {

std::string digest(std::initializer_list<std::string> parts) {
    std::string text;
    for (const std::string& part : parts) {
        text.append(part).push_back('\0');
    }
    sha256_ctx context{};
    sha256_init(&context);
    sha256_update(&context, text.size(), reinterpret_cast<const unsigned char*>(text.data()));
    std::array<unsigned char, SHA256_DIGEST_SIZE> bytes{};
    sha256_digest(&context, bytes.size(), bytes.data());
    std::string digits;
    for (const unsigned char byte : bytes) {
        digits += hex(byte, 2);
    }
    return digits;
}

}  // namespace

std::string fingerprint(const Report& report, const Finding& finding) {
    return digest({repository_path(report.candidate), finding.rule, finding.path, finding.message});
}

std::string fingerprint_of_failure(const Report& report) {
    return digest({repository_path(report.candidate)});
}

std::string fingerprint_of_rest(const Report& report, const std::string& subject) {
    return digest({repository_path(report.candidate), subject});
}

std::string repository_path(const std::string& file) {
    return std::filesystem::path(file).lexically_normal().string();
}
