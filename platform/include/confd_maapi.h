/// libconfd: MAAPI, reads of a transaction.
///
/// Every operation names the transaction by the MAAPI socket and a handle valid on it, and the node
/// by a path given as a printf format and its arguments. A path that is malformed or names no node
/// of the model is an error.
///
/// A path has an optional leading "/", its steps are parted by "/", and the keys of an entry follow
/// the list's name in one of two forms:
///   list{key}  list{key1 key2}    bare keys, taken as they stand: text without a blank, tab, line
///                                 end, brace, double quote or NUL. One blank parts two keys; any
///                                 other makes the path malformed, as does an empty key.
///   list["key"]  list["k1" "k2"]  quoted keys, any text; a quote or backslash in one follows a
///                                 backslash.
/// Braces never hold quotes, so whatever name is put between them, the path names that name's own
/// entry or is malformed; confd_pp_kpath() prints the quoted form where a key needs it. A key of a
/// number or address type may have any text that the type reads: {05} is {5}.
#pragma once

#include "confd_lib.h"

/// A walk over the entries of a list, in document order.
struct maapi_cursor {
    confd_value_t keys[MAXKEYLEN];  ///< the current entry's keys; texts belong to the transaction
    int n;                          ///< their count; 0 before the first and after the last entry
    int socket;                     ///< the platform's own, as is all that follows
    const void* list;
    unsigned long next;
};

extern "C" {

/// 1 when the node exists (a list: when it holds entries), 0 when it does not, negative on error.
int maapi_exists(int sock, int thandle, const char* fmt, ...) __attribute__((format(printf, 3, 4)));

/// The number of entries of a list, 0 for an absent one; negative on error.
int maapi_num_instances(int sock, int thandle, const char* fmt, ...)
    __attribute__((format(printf, 3, 4)));

/// The value of a leaf of the type that the name says. An absent leaf is an error.
int maapi_get_int32_elem(int sock, int thandle, int32_t* rval, const char* fmt, ...)
    __attribute__((format(printf, 4, 5)));
int maapi_get_bool_elem(int sock, int thandle, int* rval, const char* fmt, ...)
    __attribute__((format(printf, 4, 5)));
int maapi_get_ipv4_and_plen_elem(int sock, int thandle, confd_ipv4_prefix* rval, const char* fmt,
                                 ...) __attribute__((format(printf, 4, 5)));
int maapi_get_ipv6_and_plen_elem(int sock, int thandle, confd_ipv6_prefix* rval, const char* fmt,
                                 ...) __attribute__((format(printf, 4, 5)));

/// Prepares `cursor` before the first entry of a list. When it fails the cursor is one over no
/// entry.
int maapi_init_cursor(int sock, int thandle, maapi_cursor* cursor, const char* fmt, ...)
    __attribute__((format(printf, 4, 5)));
/// Moves to the next entry and fills `keys` and `n`; `n` is 0 when there is none, or on an error.
int maapi_get_next(maapi_cursor* cursor);
/// Releases the cursor.
void maapi_destroy_cursor(maapi_cursor* cursor);

/// Fetches the keys of encrypted leaves from the host and installs them for confd_decrypt() in this
/// process. Fails when the host has none.
int maapi_install_crypto_keys(int sock);
}
