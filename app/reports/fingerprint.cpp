#include "reports/fingerprint.h"

#include <openssl/evp.h>

#include <array>
#include <filesystem>
#include <initializer_list>
#include <stdexcept>

namespace {

std::string digest(std::initializer_list<std::string> parts) {
    std::string text;
    for (const std::string& part : parts) {
        text.append(part).push_back('\0');
    }
    std::array<unsigned char, EVP_MAX_MD_SIZE> bytes{};
    unsigned size = 0;
    if (EVP_Digest(text.data(), text.size(), bytes.data(), &size, EVP_sha256(), nullptr) != 1) {
        throw std::runtime_error("the fingerprint of a finding cannot be computed");
    }
    constexpr std::string_view kDigits = "0123456789abcdef";
    std::string digits;
    for (unsigned i = 0; i < size; ++i) {
        digits.append(1, kDigits[bytes[i] >> 4U]).append(1, kDigits[bytes[i] & 0xfU]);
    }
    return digits;
}

}  // namespace

std::string fingerprint(const Report& report, const Finding& finding) {
    return digest(
        {repository_path(report.candidate), finding.selector, finding.path, finding.message});
}

std::string fingerprint_of_failure(const Report& report) {
    return digest({repository_path(report.candidate)});
}

std::string fingerprint_of_rest(const Report& report, const std::string& selector) {
    return digest({repository_path(report.candidate), selector});
}

std::string repository_path(const std::string& file) {
    return std::filesystem::path(file).lexically_normal().string();
}
