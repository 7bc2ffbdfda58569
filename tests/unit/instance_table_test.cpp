#include "get_key_list.h"
#include "socket.h"
#include "support.h"
#include "validate_config.h"

using namespace local_platform;
using namespace vrrp_app::config_valid;
using Keys = std::list<std::string>;

static_assert(std::is_same_v<decltype(RouterVrrp::vr_id), uint8_t>);
static_assert(std::is_same_v<decltype(RouterVrrp::address_family), int32_t>);
static_assert(std::is_same_v<decltype(Config::router_vrrp_config), RouterVrrpConfig>);
static_assert(std::is_base_of_v<GenericConfig, RouterVrrpConfig>);
static_assert(std::has_virtual_destructor_v<GenericConfig> && !std::is_polymorphic_v<Config>);
static_assert(!std::is_polymorphic_v<ValidateConfig> && !std::is_polymorphic_v<RouterVrrp>);

namespace {

SchemaNode& child(SchemaNode& node, const char* name) {
    return node.children.at(static_cast<std::size_t>(node.child_index(name)));
}

TEST(KeyList, CutsEachKeyToItsBuffer) {
    const std::string key70(70, 'b');
    const std::string key300(300, 'c');
    const Socket socket = Socket::maapi(make_tree(
        {"$I", "/config/interface/l3{" + key70 + "}", "/config/interface/l3{" + key300 + "}"}));
    confd_trans_ctx tctx{socket.thandle(), nullptr, nullptr, nullptr};
    EXPECT_EQ(get_key_list(socket.number(), &tctx, "config/interface/l3"),
              (Keys{"vlan10", key70, key300.substr(0, 255)}));
    EXPECT_EQ(GenericConfig(socket.number(), &tctx).get_key_list("config/interface/l3"),
              (Keys{"vlan10", key70.substr(0, 63), key300.substr(0, 63)}));
    EXPECT_EQ(get_key_list(socket.number(), &tctx, "config/interface/%s%n"), Keys());
}

TEST(KeyList, TakesTheFirstKeyOfSeveral) {
    SchemaNode schema = make_tree({}).schema();
    child(child(child(schema, "config"), "interface"), "l3").keys = {"vrf", "name"};
    TreeBuilder builder(std::make_shared<const SchemaNode>(schema));
    builder.set("/config/interface/l3{red a}").set("/config/interface/l3{red b}");
    const Socket socket = Socket::maapi(std::move(builder).build());
    confd_trans_ctx tctx{socket.thandle(), nullptr, nullptr, nullptr};
    EXPECT_EQ(get_key_list(socket.number(), &tctx, "/config/interface/l3"), (Keys{"red", "red"}));
}

TEST(InstanceTable, IsReadInOrderAndAppended) {
    SchemaNode schema = make_tree({}).schema();
    SchemaNode& interface = child(child(child(schema, "router"), "vrrp"), "interface");
    child(child(child(interface, "address-family"), "vr-id"), "id").type = C_INT32;
    TreeBuilder builder(std::make_shared<const SchemaNode>(schema));
    for (const char* const path : {"$R{A}$6{1}", "$R{A}$4{2}", "$R{A}$4{257}", "$R{B}$4{1}"}) {
        builder.set(expand(path));
    }
    const Socket socket = Socket::maapi(std::move(builder).build());
    confd_trans_ctx tctx{socket.thandle(), nullptr, nullptr, nullptr};
    Config config(socket.number(), &tctx);
    config.router_vrrp_config.ReadConfig();
    config.router_vrrp_config.ReadConfig();
    Lines read;
    for (const RouterVrrp& one : config.router_vrrp_config.router_vrrp_list) {
        read.push_back(std::to_string(one.vr_id) + " " + std::to_string(one.address_family) + " " +
                       one.interface_key);
    }
    EXPECT_EQ(read,
              (Lines{"2 4 A", "1 4 A", "1 6 A", "1 4 B", "2 4 A", "1 4 A", "1 6 A", "1 4 B"}));

    ValidateConfig check{"earlier"};
    EXPECT_EQ(check.ValidateRouterVrrpVrId({2, 4, "A"}, config), 0);
    EXPECT_EQ(check.error_message, "earlier");
    EXPECT_EQ(check.ValidateRouterVrrpVrId({1, 4, "C"}, config), -1);
    EXPECT_EQ(check.error_message,
              "cannot configure the same address-family and vr-id as 'router "
              "vrrp interface A address-family ipv4 vr-id 1'.");
}

}  // namespace
