/// The sockets that are open in this process.
#pragma once

#include "local_platform.h"

namespace local_platform {

/// The transaction `thandle` of the MAAPI socket `number`; null when there is none.
const Endpoint* find_maapi(int number, int thandle);

/// What the socket `number` of kind `kind` reads; null when there is no such socket.
const Endpoint* find_socket(int number, Endpoint::Kind kind);

}  // namespace local_platform
