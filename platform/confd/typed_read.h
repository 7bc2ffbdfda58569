/// Reads that MAAPI and CDB have in common.
#pragma once

#include <string_view>

#include "endpoint.h"
#include "hook.h"
#include "path_lookup.h"

namespace local_platform {

/// What `path` names in `endpoint`'s tree; an error for a null endpoint.
Lookup look_up_in(const Endpoint* endpoint, std::string_view path);

/// 1 when the node exists in `endpoint`'s tree, 0 when it does not, negative on error.
int exists(const Endpoint* endpoint, std::string_view path);

/// Reads the leaf at `path`, of the type that the name says, into `rval`. CONFD_OK, or CONFD_ERR
/// when there is no such leaf.
int read_int32(const Endpoint* endpoint, std::string_view path, int32_t* rval);
int read_bool(const Endpoint* endpoint, std::string_view path, int* rval);
int read_ipv4_prefix(const Endpoint* endpoint, std::string_view path, confd_ipv4_prefix* rval);
int read_ipv6_prefix(const Endpoint* endpoint, std::string_view path, confd_ipv6_prefix* rval);

}  // namespace local_platform
