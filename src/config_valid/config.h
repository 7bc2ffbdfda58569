/// The configuration that a check compares with.
#pragma once

#include "router_vrrp_config.h"

namespace vrrp_app::config_valid {

struct Config {
    Config(int maapi_socket, confd_trans_ctx* tctx) : router_vrrp_config(maapi_socket, tctx) {}

    RouterVrrpConfig router_vrrp_config;
};

}  // namespace vrrp_app::config_valid
