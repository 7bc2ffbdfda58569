/// What the sockets that are open in this process read.
#pragma once

#include <optional>

#include "crypto_key.h"
#include "data_tree.h"

namespace local_platform {

struct Endpoint {
    enum class Kind { maapi, cdb } kind;
    int thandle;  ///< a MAAPI socket's one transaction
    DataTree tree;
    std::optional<CryptoKey> key;
};

/// The transaction `thandle` of the MAAPI socket `number`; null when there is none.
const Endpoint* find_maapi(int number, int thandle);

/// What the socket `number` of kind `kind` reads; null when there is no such socket.
const Endpoint* find_socket(int number, Endpoint::Kind kind);

}  // namespace local_platform
