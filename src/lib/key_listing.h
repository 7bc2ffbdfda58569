/// The one walk behind both forms of key listing.
#pragma once

#include <cstddef>
#include <list>
#include <string>

#include "platform.h"

/// The printed first keys of the list at `path` in the transaction, in cursor order. Each is
/// printed into `buffer` and so cut to `size` - 1 characters. Empty for a list that does not exist
/// or cannot be read.
std::list<std::string> list_keys(int maapi_socket, confd_trans_ctx* tctx, const std::string& path,
                                 char* buffer, std::size_t size);
