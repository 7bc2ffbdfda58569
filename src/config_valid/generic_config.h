/// What the readers of configuration have in common.
#pragma once

#include <cstdint>
#include <list>
#include <string>

#include "platform.h"

namespace vrrp_app::config_valid {

/// Reads one transaction; neither the socket nor the context is owned, and both must outlive the
/// reader.
class GenericConfig {
  public:
    GenericConfig(int maapi_socket, confd_trans_ctx* tctx);
    virtual ~GenericConfig();

    /// As the free get_key_list(), each key cut to 63 characters.
    std::list<std::string> get_key_list(const std::string& path) const;

  protected:
    int32_t maapi_socket;
    confd_trans_ctx* tctx;
};

}  // namespace vrrp_app::config_valid
