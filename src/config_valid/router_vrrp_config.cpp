#include "router_vrrp_config.h"

#include "rule_conventions.h"

namespace vrrp_app::config_valid {
namespace {

constexpr const char* kInterfaceTable = "router/vrrp/interface";
constexpr const char* kIdentifiers = "}/address-family{ipv4}/vr-id";
constexpr std::size_t kBehindFamilyDigit = sizeof "}/vr-id" - 1;

}  // namespace

RouterVrrpConfig::RouterVrrpConfig(int maapi_socket, confd_trans_ctx* tctx)
    : GenericConfig(maapi_socket, tctx) {}

RouterVrrpConfig::~RouterVrrpConfig() = default;

void RouterVrrpConfig::ReadConfig() {
    std::string path = std::string(kInterfaceTable) + "{";
    const std::size_t key_start = path.size();
    // A check of many interfaces spends most of its time here. Each key is freed at once, so that
    // the records take its place; and of the two families' paths, only the digit is written anew.
    std::list<std::string> interface_keys = get_key_list(kInterfaceTable);
    for (; !interface_keys.empty(); interface_keys.pop_front()) {
        const std::string& interface_key = interface_keys.front();
        path.resize(key_start);
        path.append(interface_key).append(kIdentifiers);
        char& family_digit = path[path.size() - kBehindFamilyDigit - 1];
        for (const int32_t family : {kIpv4, kIpv6}) {
            family_digit = static_cast<char>('0' + family);
            for (const std::string& vr_id : get_key_list(path)) {
                router_vrrp_list.push_back(
                    {static_cast<uint8_t>(std::stoi(vr_id)), family, interface_key});
            }
        }
    }
}

}  // namespace vrrp_app::config_valid
