/// libconfd: CDB, reads of a committed datastore. Paths are as in confd_maapi.h.
#pragma once

#include "confd_lib.h"

enum cdb_db_type {
    CDB_RUNNING = 1,
};

extern "C" {

/// 1 when the node exists in the session's datastore, 0 when it does not, negative on error.
int cdb_exists(int sock, const char* fmt, ...) __attribute__((format(printf, 2, 3)));

/// The committed value of a leaf of the type that the name says. An absent leaf is an error.
int cdb_get_int32(int sock, int32_t* rval, const char* fmt, ...)
    __attribute__((format(printf, 3, 4)));
int cdb_get_ipv4_and_plen(int sock, confd_ipv4_prefix* rval, const char* fmt, ...)
    __attribute__((format(printf, 3, 4)));
}
