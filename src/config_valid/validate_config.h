/// Checks of one record against the whole configuration.
#pragma once

#include <string>

#include "config.h"

namespace vrrp_app::config_valid {

struct ValidateConfig {
    /// 0 when no other interface has an instance with the address family and identifier of
    /// `router_vrrp`; else -1, with the first such instance named in `error_message`.
    int ValidateRouterVrrpVrId(const RouterVrrp& router_vrrp, const Config& config);

    std::string error_message;  ///< of the last failed check
};

}  // namespace vrrp_app::config_valid
