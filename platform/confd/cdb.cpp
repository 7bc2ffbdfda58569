#include "confd_cdb.h"

#include "path_read.h"

namespace local_platform {
namespace {

using Values = decltype(confd_value_t::val);

template <typename Read>
int serve_cdb(const char* operation, int sock, const PathArgument& path, Read read) {
    return serve_read(operation, sock, find_socket(sock, Endpoint::Kind::cdb), path, read);
}

}  // namespace
}  // namespace local_platform

using namespace local_platform;

int cdb_exists(int sock, const char* fmt, ...) {
    TAKE_PATH(path, fmt);
    return serve_cdb(__func__, sock, path, read_existence);
}

int cdb_get_int32(int sock, int32_t* rval, const char* fmt, ...) {
    TAKE_PATH(path, fmt);
    return serve_cdb(__func__, sock, path, read_value(C_INT32, &Values::i32, rval));
}

int cdb_get_ipv4_and_plen(int sock, confd_ipv4_prefix* rval, const char* fmt, ...) {
    TAKE_PATH(path, fmt);
    return serve_cdb(__func__, sock, path, read_value(C_IPV4_AND_PLEN, &Values::ipv4prefix, rval));
}
