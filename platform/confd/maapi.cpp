#include "confd_maapi.h"

#include <algorithm>

#include "crypto.h"
#include "path_argument.h"
#include "typed_read.h"

namespace local_platform {
namespace {

/// The list at `path`: its error, or its node, null when it is absent.
Lookup look_up_list(const Endpoint* endpoint, std::string_view path) {
    Lookup found = look_up_in(endpoint, path);
    if (found.error == nullptr && !found.names_list) {
        found.error = "no list";
    }
    return found;
}

int init_cursor(const Endpoint* endpoint, std::string_view path, maapi_cursor& cursor) {
    const Lookup found = look_up_list(endpoint, path);
    if (found.error != nullptr) {
        return fail(found.error, path);
    }
    cursor.list = found.node;
    return CONFD_OK;
}

/// Makes it one over no entry. The keys behind the count are nobody's, so they stay as they are.
void close_cursor(maapi_cursor& cursor) {
    cursor.n = 0;
    cursor.list = nullptr;
    cursor.next = 0;
}

int count_entries(const Endpoint* endpoint, std::string_view path) {
    const Lookup found = look_up_list(endpoint, path);
    if (found.error != nullptr) {
        return fail(found.error, path);
    }
    return found.node == nullptr ? 0 : static_cast<int>(found.node->children.size());
}

int next_entry(maapi_cursor& cursor) {
    const auto* const list = static_cast<const Node*>(cursor.list);
    if (list == nullptr || cursor.next >= list->children.size()) {
        return CONFD_OK;
    }
    const auto& keys = list->children[cursor.next++]->keys;
    std::copy(keys.begin(), keys.end(), cursor.keys);
    cursor.n = static_cast<int>(keys.size());
    return CONFD_OK;
}

}  // namespace
}  // namespace local_platform

using local_platform::close_cursor;
using local_platform::find_maapi;
using local_platform::PathArgument;
using local_platform::serve;

int maapi_exists(int sock, int thandle, const char* fmt, ...) {
    va_list arguments;
    va_start(arguments, fmt);
    const PathArgument path(fmt, arguments);
    va_end(arguments);
    return serve({"maapi_exists", sock, path.text()},
                 [&] { return local_platform::exists(find_maapi(sock, thandle), path.text()); });
}

int maapi_num_instances(int sock, int thandle, const char* fmt, ...) {
    va_list arguments;
    va_start(arguments, fmt);
    const PathArgument path(fmt, arguments);
    va_end(arguments);
    return serve({"maapi_num_instances", sock, path.text()}, [&] {
        return local_platform::count_entries(find_maapi(sock, thandle), path.text());
    });
}

int maapi_get_int32_elem(int sock, int thandle, int32_t* rval, const char* fmt, ...) {
    va_list arguments;
    va_start(arguments, fmt);
    const PathArgument path(fmt, arguments);
    va_end(arguments);
    return serve({"maapi_get_int32_elem", sock, path.text()}, [&] {
        return local_platform::read_int32(find_maapi(sock, thandle), path.text(), rval);
    });
}

int maapi_get_bool_elem(int sock, int thandle, int* rval, const char* fmt, ...) {
    va_list arguments;
    va_start(arguments, fmt);
    const PathArgument path(fmt, arguments);
    va_end(arguments);
    return serve({"maapi_get_bool_elem", sock, path.text()}, [&] {
        return local_platform::read_bool(find_maapi(sock, thandle), path.text(), rval);
    });
}

int maapi_get_ipv4_and_plen_elem(int sock, int thandle, confd_ipv4_prefix* rval, const char* fmt,
                                 ...) {
    va_list arguments;
    va_start(arguments, fmt);
    const PathArgument path(fmt, arguments);
    va_end(arguments);
    return serve({"maapi_get_ipv4_and_plen_elem", sock, path.text()}, [&] {
        return local_platform::read_ipv4_prefix(find_maapi(sock, thandle), path.text(), rval);
    });
}

int maapi_get_ipv6_and_plen_elem(int sock, int thandle, confd_ipv6_prefix* rval, const char* fmt,
                                 ...) {
    va_list arguments;
    va_start(arguments, fmt);
    const PathArgument path(fmt, arguments);
    va_end(arguments);
    return serve({"maapi_get_ipv6_and_plen_elem", sock, path.text()}, [&] {
        return local_platform::read_ipv6_prefix(find_maapi(sock, thandle), path.text(), rval);
    });
}

int maapi_init_cursor(int sock, int thandle, maapi_cursor* cursor, const char* fmt, ...) {
    va_list arguments;
    va_start(arguments, fmt);
    const PathArgument path(fmt, arguments);
    va_end(arguments);
    close_cursor(*cursor);
    cursor->socket = sock;
    return serve({"maapi_init_cursor", sock, path.text()}, [&] {
        return local_platform::init_cursor(find_maapi(sock, thandle), path.text(), *cursor);
    });
}

int maapi_get_next(maapi_cursor* cursor) {
    cursor->n = 0;
    return serve({"maapi_get_next", cursor->socket, {}},
                 [&] { return local_platform::next_entry(*cursor); });
}

void maapi_destroy_cursor(maapi_cursor* cursor) {
    serve({"maapi_destroy_cursor", cursor->socket, {}}, [&] {
        close_cursor(*cursor);
        return CONFD_OK;
    });
}

int maapi_install_crypto_keys(int sock) {
    return serve({"maapi_install_crypto_keys", sock, {}},
                 [&] { return local_platform::install_key_of(sock); });
}
