/// What the sockets that are open in this process read.
#pragma once

#include <array>
#include <atomic>
#include <optional>

#include "crypto_key.h"
#include "data_tree.h"
#include "path_memory.h"

namespace local_platform {

struct Endpoint {
    enum class Kind { maapi, cdb } kind;
    int thandle;  ///< a MAAPI socket's one transaction
    DataTree tree;
    std::optional<CryptoKey> key;
    mutable PathMemory paths{tree.store()};  ///< a socket is used by one thread at a time
};

constexpr int kMaxSockets = 1024;

/// By number; null for one that is not open. A fixed table of atomics, so that every operation
/// finds its socket without a lock. A socket is closed by its owner, after its last operation.
extern std::array<std::atomic<const Endpoint*>, kMaxSockets> sockets
    __attribute__((visibility("hidden")));

/// What the socket `number` of kind `kind` reads; null when there is no such socket.
inline const Endpoint* find_socket(int number, Endpoint::Kind kind) {
    if (number < 0 || number >= kMaxSockets) {
        return nullptr;
    }
    const Endpoint* const endpoint =
        sockets[static_cast<std::size_t>(number)].load(std::memory_order_acquire);
    return endpoint != nullptr && endpoint->kind == kind ? endpoint : nullptr;
}

/// The transaction `thandle` of the MAAPI socket `number`; null when there is none.
inline const Endpoint* find_maapi(int number, int thandle) {
    const Endpoint* const endpoint = find_socket(number, Endpoint::Kind::maapi);
    return endpoint != nullptr && endpoint->thandle == thandle ? endpoint : nullptr;
}

}  // namespace local_platform
