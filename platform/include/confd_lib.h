/// libconfd: values, keypaths, the transaction context, printing, errors and decryption.
///
/// The part of ConfD's library interface that a validation plug-in uses, served in-process.
/// Functions answer CONFD_OK or a negative number unless they say otherwise, and leave the reason
/// of their last failure in the calling thread's confd_lasterr().
#pragma once

#include <netinet/in.h>

#include <cstdint>
#include <string>
#include <vector>

namespace local_platform {
struct SchemaNode;
}

/// Result codes.
#define CONFD_OK 0
#define CONFD_ERR (-1)
#define CONFD_VALIDATION_WARN (-3)

/// The most elements of a keypath, and the most key values of one list entry plus their end mark.
#define MAXDEPTH 20
#define MAXKEYLEN 9

enum confd_vtype {
    C_NOEXISTS,       ///< no value; ends the key values of a keypath element
    C_XMLTAG,         ///< a node without a value: val.xmltag
    C_BUF,            ///< text: val.buf, NUL-terminated one byte after its size
    C_INT32,          ///< val.i32
    C_UINT8,          ///< val.u8
    C_BOOL,           ///< val.boolean, 0 or 1
    C_ENUM_VALUE,     ///< val.enumvalue
    C_IPV4,           ///< val.ip, network byte order
    C_IPV6,           ///< val.ip6, network byte order
    C_IPV4_AND_PLEN,  ///< val.ipv4prefix
    C_IPV6_AND_PLEN,  ///< val.ipv6prefix
};

/// An IPv4 address, network byte order, and its prefix length, 0 to 32. Host bits may be set.
struct confd_ipv4_prefix {
    struct in_addr ip;
    uint8_t len;
};

/// An IPv6 address, network byte order, and its prefix length, 0 to 128. Host bits may be set.
struct confd_ipv6_prefix {
    struct in6_addr ip6;
    uint8_t len;
};

/// One value. A C_BUF text belongs to the tree that the value was read from, or to its maker.
struct confd_value_t {
    enum confd_vtype type;
    union {
        struct {
            unsigned char* ptr;
            unsigned int size;  ///< bytes, without the terminating NUL
        } buf;
        const local_platform::SchemaNode* xmltag;
        int32_t i32;
        uint8_t u8;
        int boolean;
        int32_t enumvalue;
        struct in_addr ip;
        struct in6_addr ip6;
        struct confd_ipv4_prefix ipv4prefix;
        struct confd_ipv6_prefix ipv6prefix;
    } val;
};

/// The path of a node, deepest element first. `v[i][0]` is a C_XMLTAG for an element named by its
/// tag; for a list entry `v[i]` holds its key values, ended by a C_NOEXISTS, and the list's tag
/// stands at `v[i + 1][0]`.
struct confd_hkeypath_t {
    confd_value_t v[MAXDEPTH][MAXKEYLEN];
    int len;
};

/// The context of one validation request.
struct confd_trans_ctx {
    int thandle;            ///< the transaction, on the MAAPI socket of the request
    void* vcb_opaque;       ///< what the callback was registered with
    void* validate_opaque;  ///< the opaque text of the validation point at the node; may be null
    std::vector<std::string>*
        messages;  ///< the host's: where confd_trans_seterr() appends, or null
};

extern "C" {

/// Prints `v` as text into `buf`, NUL-terminated, cut to `bufsiz` bytes. An enumeration prints as
/// its number, since a bare value does not know its labels. Returns the length of the whole text.
int confd_pp_value(char* buf, int bufsiz, const confd_value_t* v);

/// Prints `kp` as a path into `buf`, NUL-terminated, cut to `bufsiz` bytes: "/a/b{key}/c", or
/// `/a/b["key"]/c` where a key cannot stand in braces, see confd_maapi.h. Returns the length of the
/// whole text, or -1, with an empty text, when `kp` has no elements or too many.
int confd_pp_kpath(char* buf, int bufsiz, const confd_hkeypath_t* kp);

/// The text of the calling thread's last failure; empty when there was none. Valid until its next
/// one.
const char* confd_lasterr(void);

/// Sets the message that the operator reads with the failed or warned validation.
void confd_trans_seterr(confd_trans_ctx* tctx, const char* fmt, ...)
    __attribute__((format(printf, 2, 3)));

/// Decrypts `len` bytes of encrypted text with the keys that maapi_install_crypto_keys() installed.
/// The clear text, never longer than the encrypted one, and a NUL where it leaves room go into
/// `output`, which must offer `len` bytes. Refuses a text that was not made with that key.
int confd_decrypt(const char* ciphertext, int len, char* output);
}
