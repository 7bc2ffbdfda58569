/// The table of all VRRP instances of a transaction.
#pragma once

#include <list>

#include "generic_config.h"
#include "router_vrrp.h"

namespace vrrp_app::config_valid {

class RouterVrrpConfig : public GenericConfig {
  public:
    RouterVrrpConfig(int maapi_socket, confd_trans_ctx* tctx);
    ~RouterVrrpConfig() override;

    /// Appends every instance: by interface in list order, IPv4 before IPv6, identifiers in list
    /// order. What cannot be read is left out.
    virtual void ReadConfig();

    std::list<RouterVrrp> router_vrrp_list;
};

}  // namespace vrrp_app::config_valid
