// The listing of keys, and the table of instances that the identifier rule reads.
#include "config.h"
#include "get_key_list.h"
#include "model.h"
#include "rule.h"
#include "socket.h"

using namespace local_platform;
using namespace vrrp_app::config_valid;
using Keys = std::list<std::string>;

namespace {

struct Transaction {
    Transaction(const SchemaNode& model, const std::vector<Setting>& nodes)
        : socket(Socket::maapi(tree_of(std::make_shared<const SchemaNode>(model), nodes))) {}

    Keys keys(const std::string& path) { return get_key_list(socket.number(), &tctx, path); }

    Socket socket;
    confd_trans_ctx tctx{socket.thandle(), nullptr, nullptr, nullptr};
};

TEST(KeyList, HoldsTheFirstKeysCutToTheirBufferAndEmptyWhereOneIsNotPrinted) {
    const std::string key300(300, 'c');
    Transaction transaction(container("", {list("l3", {"vrf", "name"}, {})}),
                            {{"l3{red a}"}, {"l3{red b}"}, {"l3{" + key300 + " a}"}});
    EXPECT_EQ(transaction.keys("l3"), (Keys{"red", "red", key300.substr(0, 255)}));
    EXPECT_EQ(GenericConfig(transaction.socket.number(), &transaction.tctx).get_key_list("/l3"),
              (Keys{"red", "red", key300.substr(0, 63)}));
    EXPECT_EQ(transaction.keys("%s%n"), Keys());
    int printed = 0;
    const ScopedCallHook fail_the_second([&](const Call& call) {
        const bool fails = call.operation == "confd_pp_value" && ++printed == 2;
        return fails ? std::optional(local_platform::Answer{CONFD_ERR}) : std::nullopt;
    });
    EXPECT_EQ(transaction.keys("l3"), (Keys{"red", "", key300.substr(0, 255)}));
}

TEST(InstanceTable, IsReadInOrderAndAppended) {
    Transaction transaction(vrrp_model(), {{instance("A", "ipv6", 1)},
                                           {instance("A", "ipv4", 2)},
                                           {instance("A", "ipv4", 255)},
                                           {instance("B", "ipv4", 1)}});
    Config config(transaction.socket.number(), &transaction.tctx);
    config.router_vrrp_config.ReadConfig();
    config.router_vrrp_config.ReadConfig();
    std::string read;
    for (const RouterVrrp& one : config.router_vrrp_config.router_vrrp_list) {
        read += std::to_string(one.vr_id) + " " + std::to_string(one.address_family) + " " +
                one.interface_key + ", ";
    }
    EXPECT_EQ(read, "2 4 A, 255 4 A, 1 6 A, 1 4 B, 2 4 A, 255 4 A, 1 6 A, 1 4 B, ");
}

}  // namespace
