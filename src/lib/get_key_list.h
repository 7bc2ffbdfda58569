/// Which entries a list holds.
#pragma once

#include <list>
#include <string>

#include "platform.h"

/// The printed first keys of the list at `path` in the transaction, in cursor order, each cut to
/// 255 characters. Empty for a list that does not exist or cannot be read.
std::list<std::string> get_key_list(int maapi_socket, confd_trans_ctx* tctx,
                                    const std::string& path);
