#include "key_listing.h"

#include <cstring>
#include <memory>

namespace {

struct CursorDeleter {
    void operator()(maapi_cursor* cursor) const { maapi_destroy_cursor(cursor); }
};
using OpenCursor = std::unique_ptr<maapi_cursor, CursorDeleter>;

}  // namespace

std::list<std::string> list_keys(int maapi_socket, confd_trans_ctx* tctx, const std::string& path,
                                 char* buffer, std::size_t size) {
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
        std::memset(buffer, 0, size);
        confd_pp_value(buffer, static_cast<int>(size), &cursor.keys[0]);
        keys.emplace_back(buffer);
        maapi_get_next(&cursor);
    }
    return keys;
}
