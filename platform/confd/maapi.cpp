#include "confd_maapi.h"

#include "crypto.h"
#include "entry_keys.h"
#include "path_read.h"

namespace local_platform {
namespace {

using Values = decltype(confd_value_t::val);

template <typename Read>
int serve_maapi(const char* operation, int sock, int thandle, const PathArgument& path, Read read) {
    return serve_read(operation, sock, find_maapi(sock, thandle), path, read);
}

/// Hands `read` the list, null when it is absent.
template <typename Read>
auto read_list(Read read) {
    return [=](const Lookup& found) -> ReadResult {
        return found.names_list ? ReadResult{read(found.node)} : ReadResult{CONFD_ERR, "no list"};
    };
}

int count_entries(const Node* list) {
    return list == nullptr ? 0 : static_cast<int>(list->children.size());
}

/// Makes it one over no entry.
void close_cursor(maapi_cursor& cursor) {
    cursor.n = 0;
    cursor.list = nullptr;
    cursor.next = 0;
}

int next_entry(maapi_cursor& cursor) {
    const auto* const list = static_cast<const Node*>(cursor.list);
    if (list == nullptr || cursor.next >= list->children.size()) {
        return CONFD_OK;
    }
    cursor.n = read_keys(*list->children[cursor.next++], cursor.keys);
    return CONFD_OK;
}

}  // namespace
}  // namespace local_platform

using namespace local_platform;

int maapi_exists(int sock, int thandle, const char* fmt, ...) {
    TAKE_PATH(path, fmt);
    return serve_maapi(__func__, sock, thandle, path, read_existence);
}

int maapi_num_instances(int sock, int thandle, const char* fmt, ...) {
    TAKE_PATH(path, fmt);
    return serve_maapi(__func__, sock, thandle, path, read_list(count_entries));
}

int maapi_get_int32_elem(int sock, int thandle, int32_t* rval, const char* fmt, ...) {
    TAKE_PATH(path, fmt);
    return serve_maapi(__func__, sock, thandle, path, read_value(C_INT32, &Values::i32, rval));
}

int maapi_get_bool_elem(int sock, int thandle, int* rval, const char* fmt, ...) {
    TAKE_PATH(path, fmt);
    return serve_maapi(__func__, sock, thandle, path, read_value(C_BOOL, &Values::boolean, rval));
}

int maapi_get_ipv4_and_plen_elem(int sock, int thandle, confd_ipv4_prefix* rval, const char* fmt,
                                 ...) {
    TAKE_PATH(path, fmt);
    return serve_maapi(__func__, sock, thandle, path,
                       read_value(C_IPV4_AND_PLEN, &Values::ipv4prefix, rval));
}

int maapi_get_ipv6_and_plen_elem(int sock, int thandle, confd_ipv6_prefix* rval, const char* fmt,
                                 ...) {
    TAKE_PATH(path, fmt);
    return serve_maapi(__func__, sock, thandle, path,
                       read_value(C_IPV6_AND_PLEN, &Values::ipv6prefix, rval));
}

int maapi_init_cursor(int sock, int thandle, maapi_cursor* cursor, const char* fmt, ...) {
    TAKE_PATH(path, fmt);
    close_cursor(*cursor);
    cursor->socket = sock;
    return serve_maapi(__func__, sock, thandle, path, read_list([=](const Node* list) {
                           cursor->list = list;
                           return CONFD_OK;
                       }));
}

int maapi_get_next(maapi_cursor* cursor) {
    cursor->n = 0;
    return serve(__func__, cursor->socket, {}, [&] { return next_entry(*cursor); });
}

void maapi_destroy_cursor(maapi_cursor* cursor) {
    serve(__func__, cursor->socket, {}, [&] {
        close_cursor(*cursor);
        return CONFD_OK;
    });
}

int maapi_install_crypto_keys(int sock) {
    return serve(__func__, sock, {}, [&] { return install_key_of(sock); });
}
