/// What the sockets that are open in this process read.
#pragma once

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

/// What the socket `number` of kind `kind` reads; null when there is no such socket. Valid until
/// its owner closes it.
const Endpoint* find_socket(int number, Endpoint::Kind kind);

/// The transaction `thandle` of the MAAPI socket `number`; null when there is none.
const Endpoint* find_maapi(int number, int thandle);

}  // namespace local_platform
