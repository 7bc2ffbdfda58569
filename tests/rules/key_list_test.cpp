// The listing of keys, for rules and for the table of instances.
#include "config.h"
#include "get_key_list.h"
#include "rule.h"
#include "socket.h"

using namespace local_platform;
using namespace vrrp_app::config_valid;
using Keys = std::list<std::string>;

namespace {

TEST(KeyList, HoldsTheFirstKeysCutToTheirBufferAndEmptyWhereOneIsNotPrinted) {
    const std::string key300(300, 'c');
    const auto model =
        std::make_shared<const SchemaNode>(container("", {list("l3", {"vrf", "name"}, {})}));
    const Socket socket =
        Socket::maapi(tree_of(model, {{"l3{red a}"}, {"l3{red b}"}, {"l3{" + key300 + " a}"}}));
    confd_trans_ctx tctx{socket.thandle(), nullptr, nullptr, nullptr};
    const auto keys = [&](const char* list) { return get_key_list(socket.number(), &tctx, list); };
    EXPECT_EQ(keys("l3"), (Keys{"red", "red", key300.substr(0, 255)}));
    EXPECT_EQ(GenericConfig(socket.number(), &tctx).get_key_list("/l3"),
              (Keys{"red", "red", key300.substr(0, 63)}));
    EXPECT_EQ(keys("%s%n"), Keys());
    int printed = 0;
    const ScopedCallHook fail_the_second([&](const Call& call) {
        const bool fails = call.operation == "confd_pp_value" && ++printed == 2;
        return fails ? std::optional(local_platform::Answer{CONFD_ERR}) : std::nullopt;
    });
    EXPECT_EQ(keys("l3"), (Keys{"red", "", key300.substr(0, 255)}));
}

}  // namespace
