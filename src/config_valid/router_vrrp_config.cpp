#include "router_vrrp_config.h"

#include <string_view>

#include "rule_conventions.h"

namespace vrrp_app::config_valid {
namespace {

constexpr const char* kInterfaceTable = "router/vrrp/interface";

struct Family {
    std::string_view name;
    int32_t address_family;
};
constexpr Family kFamilies[] = {{"ipv4", kIpv4}, {"ipv6", kIpv6}};

}  // namespace

RouterVrrpConfig::RouterVrrpConfig(int maapi_socket, confd_trans_ctx* tctx)
    : GenericConfig(maapi_socket, tctx) {}

RouterVrrpConfig::~RouterVrrpConfig() = default;

void RouterVrrpConfig::ReadConfig() {
    std::string path;
    for (const std::string& interface_key : get_key_list(kInterfaceTable)) {
        for (const Family& family : kFamilies) {
            path.assign(kInterfaceTable).append("{").append(interface_key);
            path.append("}/address-family{").append(family.name).append("}/vr-id");
            for (const std::string& vr_id : get_key_list(path)) {
                router_vrrp_list.push_back(
                    {static_cast<uint8_t>(std::stoi(vr_id)), family.address_family, interface_key});
            }
        }
    }
}

}  // namespace vrrp_app::config_valid
