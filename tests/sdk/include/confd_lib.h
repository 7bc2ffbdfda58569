/// A ConfD library other than the platform's: other enumerators, the union before the type and in
/// another order, deeper keypaths with fewer keys, and no word about visibility.
#pragma once

#include <netinet/in.h>
#include <stdint.h>

#include <string>

#define CONFD_OK 0
#define CONFD_ERR (-1)
#define CONFD_VALIDATION_WARN (-3)

typedef enum confd_vtype {
    C_IPV6 = 91,
    C_IPV4 = 82,
    C_ENUM_VALUE = 73,
    C_UINT8 = 64,
    C_BUF = 55,
    C_NOEXISTS = 46
} confd_vtype;

struct confd_ipv4_prefix {
    uint8_t len;
    struct in_addr ip;
};

struct confd_ipv6_prefix {
    uint8_t len;
    struct in6_addr ip6;
};

typedef struct confd_value {
    union {
        struct in6_addr ip6;
        uint8_t u8;
        struct in_addr ip;
        struct {
            unsigned int size;
            unsigned char* ptr;
        } buf;
        int32_t enumvalue;
    } val;
    confd_vtype type;
} confd_value_t;

typedef struct confd_hkeypath {
    int len;
    confd_value_t v[30][4];
    std::string text;  // what confd_pp_kpath() prints
} confd_hkeypath_t;

struct confd_trans_ctx {
    void* validate_opaque;
    std::string message;
    void* vcb_opaque;
    int thandle;
};

extern "C" {
int confd_pp_value(char* buf, int bufsiz, const confd_value_t* v);
int confd_pp_kpath(char* buf, int bufsiz, const confd_hkeypath_t* kp);
const char* confd_lasterr(void);
void confd_trans_seterr(struct confd_trans_ctx* tctx, const char* fmt, ...);
int confd_decrypt(const char* ciphertext, int len, char* output);
}
