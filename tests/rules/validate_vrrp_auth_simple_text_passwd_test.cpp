#include "rule.h"

namespace {

const std::string kPassword = kIpv4Instance + "/authentication/simple-text-password";
const Answer kLength = error("bad length/size.");
const Answer kNoKey = error("Could not validate authentication simple-text password.");
const Calls kInstall = Calls("maapi_install_crypto_keys").fails(kNoKey);
const Calls kReads = {kInstall, Calls("confd_decrypt").fails(kLength)};

/// A password that is stored as `text`.
template <typename... Parts>
Case password(const std::string& name, const std::string& text, const Parts&... parts) {
    return Case(name, Candidate{{kPassword, text}}, Request{kPassword}, parts...);
}

const AddRule kRule(
    "vrrp_auth_passwd_validation", "validate_vrrp_auth_simple_text_passwd", {{kNewValue, "C_BUF"}},
    {
        password("8 bytes", stored("Pa55wor8"), ok(), kReads),
        password("9 bytes", stored("Pa55word9"), kLength, Calls{kReads, kSetError}),
        password("empty", stored(""), kLength),
        password("10 bytes in 5 characters", stored("äöüßé"), kLength),
        password("bytes behind a NUL", stored(std::string("ab\0\000345678", 10)), ok()),
        password("stored with bytes behind a NUL", stored("a") + std::string("\0b", 2), ok()),
        password("decrypted to nothing", stored("a"), PlatformAnswers{{"confd_decrypt", 0}},
                 kLength),
        password("6104 bytes", stored(std::string(6104, 'k')), kLength),
        // Written down once: what operators have stored opens in every later release.
        password("stored by an earlier release",
                 "$aes-256-gcm$YdfExXchpjgy4M5alXgk5V2qn7zKzIxM1fQHdqr1s13ixH0r", ok()),
        password("in clear", "secret", kLength),
        password("tampered with", stored("abc").replace(20, 4, "AAAA"), kLength),
        password("stored with another key",
                 local_platform::encrypt(local_platform::CryptoKey(), "abc"), kLength),
        password("stored in 8191 bytes", std::string(8191, 'k'), kLength, Calls{kReads, kSetError}),
        password("stored in 8192 bytes", std::string(8192, 'k'), kLength,
                 Calls{kInstall, kSetError}),
        password("no key before a wrong value", stored("a"), CryptoKeys{false},
                 WrongType{kNewValue}, kNoKey, Calls{kInstall, kSetError}),
    });

}  // namespace
