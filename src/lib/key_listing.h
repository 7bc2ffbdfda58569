/// The one walk behind both forms of key listing.
#pragma once

#include <cstddef>
#include <list>
#include <memory>
#include <string>

#include "platform.h"

struct CursorDeleter {
    void operator()(maapi_cursor* cursor) const { maapi_destroy_cursor(cursor); }
};
using OpenCursor = std::unique_ptr<maapi_cursor, CursorDeleter>;

/// The printed first keys of the list at `path` in the transaction, in cursor order, each cut to
/// `kBufferSize` - 1 characters. Empty for a list that does not exist or cannot be read.
template <std::size_t kBufferSize>
std::list<std::string> list_keys(int maapi_socket, const confd_trans_ctx* tctx,
                                 const std::string& path) {
    std::list<std::string> keys;
    if (maapi_exists(maapi_socket, tctx->thandle, "%s", path.c_str()) != 1) {
        return keys;
    }
    // The key count decides, not the calls' results; zero is what a failed call leaves it at.
    maapi_cursor cursor{};
    maapi_init_cursor(maapi_socket, tctx->thandle, &cursor, "%s", path.c_str());
    const OpenCursor release(&cursor);
    maapi_get_next(&cursor);
    while (cursor.n != 0) {
        char buffer[kBufferSize] = {};
        confd_pp_value(buffer, sizeof buffer, &cursor.keys[0]);
        keys.emplace_back(buffer);
        maapi_get_next(&cursor);
    }
    return keys;
}
