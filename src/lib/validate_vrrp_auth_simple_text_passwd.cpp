#include <cstring>

#include "handlers.h"

#include "typed_value.h"

namespace {

/// One byte more than the longest encrypted text that is decrypted, so that a NUL always ends the
/// clear text.
constexpr std::size_t kClearTextSize = 8192;
constexpr std::size_t kLongestPassword = 8;
constexpr const char* kBadLength = "bad length/size.";

/// A clear-text buffer, zeroed at first and wiped when it goes, also while an exception passes.
class ClearText {
  public:
    ClearText() = default;
    ClearText(const ClearText&) = delete;
    ClearText& operator=(const ClearText&) = delete;
    ~ClearText() { explicit_bzero(bytes_, sizeof bytes_); }

    char* data() { return bytes_; }

  private:
    char bytes_[kClearTextSize] = {};
};

}  // namespace

int32_t validate_vrrp_auth_simple_text_passwd(int32_t maapi_socket, confd_trans_ctx* tctx,
                                              confd_hkeypath_t* /*kp*/, confd_value_t* newval) {
    if (maapi_install_crypto_keys(maapi_socket) != CONFD_OK) {
        set_error(tctx, "Could not validate authentication simple-text password.");
        return CONFD_ERR;
    }
    ClearText clear_text;
    const char* const encrypted = BUF_TEXT(newval);
    const std::size_t length = std::strlen(encrypted);
    if (length >= kClearTextSize ||
        confd_decrypt(encrypted, static_cast<int>(length), clear_text.data()) != CONFD_OK) {
        set_error(tctx, kBadLength);
        return CONFD_ERR;
    }
    const std::size_t count = std::strlen(clear_text.data());
    if (count < 1 || count > kLongestPassword) {
        set_error(tctx, kBadLength);
        return CONFD_ERR;
    }
    return CONFD_OK;
}
