#pragma once

#include <confd_lib.h>

struct maapi_cursor {
    int n;
    confd_value_t keys[4];
    std::string* entries;  // what is left, a line each
};

extern "C" {
int maapi_exists(int sock, int thandle, const char* fmt, ...);
int maapi_num_instances(int sock, int thandle, const char* fmt, ...);
int maapi_get_int32_elem(int sock, int thandle, int32_t* rval, const char* fmt, ...);
int maapi_get_bool_elem(int sock, int thandle, int* rval, const char* fmt, ...);
int maapi_get_ipv4_and_plen_elem(int sock, int thandle, confd_ipv4_prefix* rval, const char* fmt,
                                 ...);
int maapi_get_ipv6_and_plen_elem(int sock, int thandle, confd_ipv6_prefix* rval, const char* fmt,
                                 ...);
int maapi_init_cursor(int sock, int thandle, maapi_cursor* cursor, const char* fmt, ...);
int maapi_get_next(maapi_cursor* cursor);
void maapi_destroy_cursor(maapi_cursor* cursor);
int maapi_install_crypto_keys(int sock);
}
