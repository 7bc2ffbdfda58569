#include "confd_cdb.h"

#include "path_argument.h"
#include "typed_read.h"

namespace local_platform {
namespace {

const Endpoint* find_cdb(int sock) {
    return find_socket(sock, Endpoint::Kind::cdb);
}

}  // namespace
}  // namespace local_platform

using local_platform::find_cdb;
using local_platform::PathArgument;
using local_platform::serve;

int cdb_exists(int sock, const char* fmt, ...) {
    va_list arguments;
    va_start(arguments, fmt);
    const PathArgument path(fmt, arguments);
    va_end(arguments);
    return serve({"cdb_exists", sock, path.text()},
                 [&] { return local_platform::exists(find_cdb(sock), path.text()); });
}

int cdb_get_int32(int sock, int32_t* rval, const char* fmt, ...) {
    va_list arguments;
    va_start(arguments, fmt);
    const PathArgument path(fmt, arguments);
    va_end(arguments);
    return serve({"cdb_get_int32", sock, path.text()},
                 [&] { return local_platform::read_int32(find_cdb(sock), path.text(), rval); });
}

int cdb_get_ipv4_and_plen(int sock, confd_ipv4_prefix* rval, const char* fmt, ...) {
    va_list arguments;
    va_start(arguments, fmt);
    const PathArgument path(fmt, arguments);
    va_end(arguments);
    return serve({"cdb_get_ipv4_and_plen", sock, path.text()}, [&] {
        return local_platform::read_ipv4_prefix(find_cdb(sock), path.text(), rval);
    });
}
