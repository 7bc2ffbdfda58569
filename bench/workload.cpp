#include "workload.h"

#include <nlohmann/json.hpp>

using json = nlohmann::ordered_json;

namespace {

std::string l3_name(int instance) {
    return "vlan" + std::to_string(instance + 1);
}

/// The first three octets of the instance's IPv4 network.
std::string ipv4_network(int instance) {
    return "10." + std::to_string(instance / 256) + "." + std::to_string(instance % 256) + ".";
}

std::string ipv6_network(int instance) {
    return "2001:db8:" + std::to_string(instance + 1) + "::";
}

json l3_interface(int instance) {
    return {{"name", l3_name(instance)},
            {"lower-layer-if", {{"vlan", instance + 1}}},
            {"ipv4", {{"address", {{"ip", ipv4_network(instance) + "2/24"}}}}},
            {"ipv6",
             {{"enable", true},
              {"address", json::array({{{"ip", ipv6_network(instance) + "2/64"}}})}}}};
}

json vrrp_interface(int instance, int identifier, bool with_version,
                    const local_platform::CryptoKey& key) {
    const bool is_ipv4 = instance % 2 == 0;
    json router = {{"id", identifier}, {"priority", 100}};
    if (with_version) {
        router["version"] = 3;
    }
    if (is_ipv4) {
        router["address"]["ipv4"] = json::array({{{"ip", ipv4_network(instance) + "1"}}});
        router["authentication"]["simple-text-password"] = local_platform::encrypt(key, "secret");
    } else {
        router["address"]["ipv6"] = json::array({{{"ip", ipv6_network(instance) + "1"}}});
        router["address-link-local"]["link-local"]["auto-configuration"] = json::array({nullptr});
    }
    const json family = {{"family", is_ipv4 ? "ipv4" : "ipv6"}, {"vr-id", json::array({router})}};
    return {{"name", "l3-" + l3_name(instance)}, {"address-family", json::array({family})}};
}

std::string configuration(int instances, int identifiers, bool with_version, bool with_conflict,
                          const local_platform::CryptoKey& key) {
    json l3 = json::array();
    json vrrp = json::array();
    for (int i = 0; i < instances; ++i) {
        const bool conflicts = with_conflict && i == instances - 1;
        l3.push_back(l3_interface(i));
        const int identifier = i / 2 % identifiers + (conflicts ? 0 : 1);
        vrrp.push_back(vrrp_interface(i, identifier, with_version, key));
    }
    return json{{"l3-interface:config", {{"interface", {{"l3", l3}}}}},
                {"router-vrrp:router", {{"vrrp", {{"interface", vrrp}}}}}}
        .dump();
}

}  // namespace

Workload make_workload(int instances, const local_platform::CryptoKey& key, int identifiers) {
    return {configuration(instances, identifiers, true, false, key),
            configuration(instances, identifiers, false, false, key)};
}

std::string make_conflict(int instances, const local_platform::CryptoKey& key) {
    return configuration(instances, kIdentifiers, true, true, key);
}
