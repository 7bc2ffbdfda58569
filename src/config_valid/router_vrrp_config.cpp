#include "router_vrrp_config.h"

#include <string_view>

#include "rule_conventions.h"

namespace vrrp_app::config_valid {
namespace {

constexpr const char* kInterfaceTable = "router/vrrp/interface";

struct Family {
    std::string_view path_end;
    int32_t address_family;
};
constexpr Family kFamilies[] = {{"ipv4}/vr-id", kIpv4}, {"ipv6}/vr-id", kIpv6}};

}  // namespace

RouterVrrpConfig::RouterVrrpConfig(int maapi_socket, confd_trans_ctx* tctx)
    : GenericConfig(maapi_socket, tctx) {}

RouterVrrpConfig::~RouterVrrpConfig() = default;

void RouterVrrpConfig::ReadConfig() {
    std::string path = std::string(kInterfaceTable) + "{";
    const std::size_t key_start = path.size();
    std::list<std::string> interface_keys = get_key_list(kInterfaceTable);
    for (; !interface_keys.empty(); interface_keys.pop_front()) {
        const std::string& interface_key = interface_keys.front();
        path.resize(key_start);
        path.append(interface_key).append("}/address-family{");
        const std::size_t family_start = path.size();
        for (const Family& family : kFamilies) {
            path.resize(family_start);
            path.append(family.path_end);
            for (const std::string& vr_id : get_key_list(path)) {
                router_vrrp_list.push_back(
                    {static_cast<uint8_t>(std::stoi(vr_id)), family.address_family, interface_key});
            }
        }
    }
}

}  // namespace vrrp_app::config_valid
