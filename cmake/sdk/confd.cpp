/// What the plug-in uses of libconfd. Built when the tree is configured for a router SDK, and never
/// run.
#include <confd_lib.h>

#include <confd_cdb.h>
#include <confd_maapi.h>

static_assert(CONFD_OK == 0 && CONFD_ERR == -1 && CONFD_VALIDATION_WARN == -3, "result codes");
static_assert(CDB_RUNNING == 1, "the running datastore");

int main() {
    confd_trans_ctx* const tctx = nullptr;
    int const thandle = tctx->thandle;
    void* const opaque[] = {tctx->vcb_opaque, tctx->validate_opaque};
    confd_hkeypath_t* const kp = nullptr;
    confd_value_t& value = kp->v[7][0];
    bool const typed = value.type == C_BUF || value.type == C_ENUM_VALUE || value.type == C_UINT8 ||
                       value.type == C_IPV4 || value.type == C_IPV6;
    auto* const text = reinterpret_cast<const char*>(value.val.buf.ptr);
    int32_t number = value.val.enumvalue;
    uint8_t const small = value.val.u8;
    in_addr const ipv4 = value.val.ip;
    in6_addr const ipv6 = value.val.ip6;
    confd_ipv4_prefix ipv4_prefix{};
    confd_ipv6_prefix ipv6_prefix{};
    ipv4_prefix.ip = ipv4;
    ipv6_prefix.ip6 = ipv6;
    char buffer[1] = {static_cast<char>(ipv4_prefix.len + ipv6_prefix.len + small + typed)};
    maapi_cursor cursor{};

    confd_pp_value(buffer, 1, &cursor.keys[0]);
    confd_pp_kpath(buffer, 1, kp);
    confd_trans_seterr(tctx, "%s", confd_lasterr());
    int result = opaque[0] == opaque[1];
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
