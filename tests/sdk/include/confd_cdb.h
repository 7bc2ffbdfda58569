#pragma once

#include <confd_lib.h>

enum cdb_db_type { CDB_STARTUP = 7, CDB_RUNNING = 1 };

extern "C" {
int cdb_exists(int sock, const char* fmt, ...);
int cdb_get_int32(int sock, int32_t* rval, const char* fmt, ...);
int cdb_get_ipv4_and_plen(int sock, confd_ipv4_prefix* rval, const char* fmt, ...);
}
