/// What the plug-in uses of libconfd. Built when the tree is configured for a router SDK, and never
/// run.
#include "platform.h"

#include "typed_value.h"

static_assert(CONFD_OK == 0 && CONFD_ERR == -1 && CONFD_VALIDATION_WARN == -3, "result codes");
static_assert(CDB_RUNNING == 1, "the running datastore");

int main() {
    confd_trans_ctx* const tctx = nullptr;
    int const thandle = tctx->thandle;
    auto* const selector = static_cast<const char*>(tctx->validate_opaque);
    confd_hkeypath_t* const kp = nullptr;
    const char* const text = BUF_TEXT(&kp->v[7][0]);
    int32_t number = ENUM_VALUE(&kp->v[3][0]);
    uint8_t const small = UINT8_VALUE(&kp->v[1][0]);
    confd_ipv4_prefix ipv4_prefix{};
    confd_ipv6_prefix ipv6_prefix{};
    ipv4_prefix.ip = IPV4_VALUE(&kp->v[0][0]);
    ipv6_prefix.ip6 = IPV6_VALUE(&kp->v[0][0]);
    char buffer[1] = {static_cast<char>(ipv4_prefix.len + ipv6_prefix.len + small)};
    maapi_cursor cursor{};

    confd_pp_value(buffer, 1, &cursor.keys[0]);
    confd_pp_kpath(buffer, 1, kp);
    confd_trans_seterr(tctx, "%s", confd_lasterr());
    int result = selector == tctx->vcb_opaque;
    result += confd_decrypt(text, 1, buffer) + maapi_install_crypto_keys(1);
    result +=
        maapi_exists(1, thandle, "%s", buffer) + maapi_num_instances(1, thandle, "%s", buffer);
    result += maapi_get_int32_elem(1, thandle, &number, "%s", buffer);
    result += maapi_get_bool_elem(1, thandle, &number, "%s", buffer);
    result += maapi_get_ipv4_and_plen_elem(1, thandle, &ipv4_prefix, "%s", buffer);
    result += maapi_get_ipv6_and_plen_elem(1, thandle, &ipv6_prefix, "%s", buffer);
    maapi_init_cursor(1, thandle, &cursor, "%s", buffer);
    maapi_get_next(&cursor);
    maapi_destroy_cursor(&cursor);
    result += cdb_exists(1, "%s", buffer) + cdb_get_int32(1, &number, "%s", buffer);
    result += cdb_get_ipv4_and_plen(1, &ipv4_prefix, "%s", buffer);
    return cursor.n + result;
}
