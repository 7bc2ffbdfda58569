#include "validate_config.h"

#include "rule_conventions.h"

namespace vrrp_app::config_valid {

int ValidateConfig::ValidateRouterVrrpVrId(const RouterVrrp& router_vrrp, const Config& config) {
    for (const RouterVrrp& other : config.router_vrrp_config.router_vrrp_list) {
        if (other.vr_id != router_vrrp.vr_id ||
            other.address_family != router_vrrp.address_family ||
            other.interface_key == router_vrrp.interface_key) {
            continue;
        }
        error_message = concat({"cannot configure the same address-family and vr-id as '",
                                "router vrrp interface ", other.interface_key, " address-family ",
                                family_name(other.address_family), " vr-id ",
                                std::to_string(other.vr_id), "'."});
        return -1;
    }
    return 0;
}

}  // namespace vrrp_app::config_valid
