// vrrp-valid-fleet DEVICES FOLDER [INTERFACES]: writes FOLDER/running/ and FOLDER/candidate/, a
// configuration of every device in each. A device has 50 layer-3 interfaces and 20 VRRP instances
// beside the data of other modules; its candidate changes one priority, and that of every hundredth
// device is refused. With INTERFACES it has as many, and no data of other modules.
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iomanip>
#include <iostream>
#include <nlohmann/json.hpp>
#include <sstream>

using json = nlohmann::ordered_json;
namespace fs = std::filesystem;

namespace {

constexpr int kInterfaces = 50;
constexpr int kInstances = 20;

std::string device_name(int device) {
    std::ostringstream name;
    name << "device-" << std::setfill('0') << std::setw(6) << device;
    return name.str();
}

std::string network(int device, int interface) {
    const int number = device * kInterfaces + interface;
    return std::to_string(10 + number / 65536) + "." + std::to_string(number / 256 % 256) + "." +
           std::to_string(number % 256) + ".";
}

json l3_interface(int device, int number) {
    const std::string net = network(device, number);
    const std::string address = "2001:db8:" + std::to_string(number / 1000) + ":" +
                                std::to_string(number % 1000 + 1) + "::2/64";
    return {{"name", "vlan" + std::to_string(number + 1)},
            {"lower-layer-if", {{"vlan", number + 1}}},
            {"ipv4", {{"address", {{"ip", net + "2/24"}}}}},
            {"ipv6", {{"enable", true}, {"address", json::array({{{"ip", address}}})}}}};
}

json vrrp_interface(int device, int number, int priority) {
    const json router = {
        {"id", number + 1},
        {"version", 3},
        {"priority", priority},
        {"address", {{"ipv4", json::array({{{"ip", network(device, number) + "1"}}})}}}};
    return {
        {"name", "l3-vlan" + std::to_string(number + 1)},
        {"address-family", json::array({{{"family", "ipv4"}, {"vr-id", json::array({router})}}})}};
}

/// What no rule reads: a system, and the ports beneath the interfaces.
json other_modules(int device) {
    json ports = json::array();
    for (int number = 0; number < kInterfaces; ++number) {
        ports.push_back({{"name", "port" + std::to_string(number + 1)},
                         {"description", "to rack " + std::to_string(number + 1)},
                         {"type", "iana-if-type:ethernetCsmacd"},
                         {"enabled", true}});
    }
    return {
        {"ietf-system:system",
         {{"hostname", device_name(device)},
          {"contact", "noc@example.net"},
          {"clock", {{"timezone-name", "Europe/Berlin"}}},
          {"ntp",
           {{"server", json::array({{{"name", "ntp"}, {"udp", {{"address", "192.0.2.123"}}}}})}}}}},
        {"ietf-interfaces:interfaces", {{"interface", ports}}}};
}

json configuration(int device, int interfaces, bool is_candidate) {
    json l3 = json::array();
    for (int number = 0; number < interfaces; ++number) {
        l3.push_back(l3_interface(device, number));
    }
    json vrrp = json::array();
    for (int number = 0; number < kInstances; ++number) {
        vrrp.push_back(vrrp_interface(device, number, is_candidate && number == 0 ? 120 : 100));
    }
    if (is_candidate && device % 100 == 0) {
        l3[0]["vrf"] = "guests";
    }
    json all = interfaces == kInterfaces ? other_modules(device) : json::object();
    all["l3-interface:config"]["interface"]["l3"] = l3;
    all["router-vrrp:router"]["vrrp"]["interface"] = vrrp;
    return all;
}

}  // namespace

int main(int argc, char** argv) {
    if (argc != 3 && argc != 4) {
        std::cerr << "usage: vrrp-valid-fleet DEVICES FOLDER [INTERFACES]\n";
        return EXIT_FAILURE;
    }
    const int interfaces = argc == 4 ? std::stoi(argv[3]) : kInterfaces;
    for (const bool is_candidate : {false, true}) {
        const fs::path folder = fs::path(argv[2]) / (is_candidate ? "candidate" : "running");
        fs::create_directories(folder);
        for (int device = 1; device <= std::stoi(argv[1]); ++device) {
            std::ofstream(folder / (device_name(device) + ".json"))
                << configuration(device, interfaces, is_candidate).dump(2) << "\n";
        }
    }
}
