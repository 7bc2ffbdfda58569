#include "router_vrrp_config.h"

#include "rule_conventions.h"

namespace vrrp_app::config_valid {
namespace {

constexpr const char* kInterfaceTable = "router/vrrp/interface";

}  // namespace

RouterVrrpConfig::RouterVrrpConfig(int maapi_socket, confd_trans_ctx* tctx)
    : GenericConfig(maapi_socket, tctx) {}

RouterVrrpConfig::~RouterVrrpConfig() = default;

void RouterVrrpConfig::ReadConfig() {
    for (const std::string& interface_key : get_key_list(kInterfaceTable)) {
        const std::string families =
            concat({kInterfaceTable, "{", interface_key, "}/address-family{"});
        for (const int32_t family : {kIpv4, kIpv6}) {
            for (const std::string& vr_id :
                 get_key_list(concat({families, family_name(family), "}/vr-id"}))) {
                router_vrrp_list.push_back(
                    {static_cast<uint8_t>(std::stoi(vr_id)), family, interface_key});
            }
        }
    }
}

}  // namespace vrrp_app::config_valid
