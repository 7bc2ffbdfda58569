// What reads answer, and when they fail.
#include "confd_cdb.h"
#include "confd_maapi.h"
#include "crypto_key.h"
#include "socket.h"
#include "support.h"

using namespace local_platform;

namespace {

TEST(Read, OfAnythingButALeafOfItsTypeFails) {
    const DataTree tree = tree_of(router_model(), {{"/config/interface/l3{a}/vlan", "-10"}});
    const Socket maapi = Socket::maapi(tree);
    const Socket empty = Socket::maapi(DataTree(router_model()));
    const int s = maapi.number();
    const int t = maapi.thandle();
    const char* const vlan = "/config/interface/l3{a}/vlan";
    int32_t number = 0;
    int flag = 0;
    EXPECT_EQ(maapi_get_int32_elem(s, t, &number, "%s", vlan), CONFD_OK);
    EXPECT_EQ(number, -10);
    EXPECT_LT(maapi_get_bool_elem(s, t, &flag, "%s", vlan), 0);
    EXPECT_LT(maapi_get_int32_elem(empty.number(), empty.thandle(), &number, "%s", vlan), 0);
    EXPECT_LT(maapi_num_instances(s, t, "%s", vlan), 0);
    EXPECT_LT(maapi_exists(s, empty.thandle(), "/config"), 0) << "another socket's transaction";
    EXPECT_LT(cdb_exists(s, "/config"), 0) << "not a CDB socket";
    const int closed = Socket::cdb(tree).number();
    EXPECT_LT(cdb_exists(closed, "/config"), 0);
    EXPECT_STREQ(confd_lasterr(), "no such socket or transaction: /config");
}

TEST(CryptoKeys, OfAHostWithoutOneReplaceThoseOfAnEarlierOne) {
    const CryptoKey key;
    const std::string text = encrypt(key, "secret");
    std::string clear(text.size(), '\0');
    const Socket with_key = Socket::maapi(DataTree(router_model()), key);
    const Socket without_key = Socket::maapi(DataTree(router_model()));
    const auto decrypt = [&] {
        return confd_decrypt(text.data(), static_cast<int>(text.size()), clear.data());
    };
    EXPECT_EQ(maapi_install_crypto_keys(with_key.number()) + decrypt(), CONFD_OK);
    EXPECT_LT(maapi_install_crypto_keys(without_key.number()), 0);
    EXPECT_LT(decrypt(), 0);
}

}  // namespace
