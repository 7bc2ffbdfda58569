// Paths as the platform reads and prints them, and what its reads answer.
#include "keypath.h"
#include "socket.h"
#include "support.h"

using namespace local_platform;

namespace {

DataTree example() {
    return make_tree({"$VLAN = -10", "$I/ipv6/address{2001:db8::1/64}", "$V/version = 3"});
}

TEST(Path, NamesANodeOrIsAnError) {
    const DataTree tree = example();
    const Socket maapi = Socket::maapi(tree);
    const Socket cdb = Socket::cdb(tree);
    for (const Lines& row : table(R"(
             1 | /config | config/interface/l3{vlan10} | /config/interface/l3 | $R{l3-vlan10}$4{05}/version
             1 | /config/interface/l3{ "vlan\10" } | $I/ipv6/address{2001:DB8:0::1/64} | $R{l3-vlan10}$4{05}
             0 | $I/vrf | $I/ipv4/address/secondary | /config/interface/l3{nope}/vrf | /config/interface/l3{""}
            -1 | /nope | //config | /config/ | /config//interface | /config{a} | $I/nope | $I/vrf/nope
            -1 | $I/vrf{a} | $I} | $Ivrf | /config/interface/l3/vrf | /config/interface/l3} | /config/interface/l3{
            -1 | /config/interface/l3{} | /config/interface/l3{a | /config/interface/l3{{a} | /config/interface/l3{a b}
            -1 | /config/interface/l3{a"b"} | /config/interface/l3{"a"b} | /config/interface/l3{"a} | /config/interface/l3{"a\
            -1 | /config/interface/l3{"a\"} | /config/interface/l3{a a a a a a a a a a a a}
            -1 | $I/ipv6/address{2001:db8::1} | $R{l3-vlan10}/address-family{ipv5} | $R{l3-vlan10}$4{256})")) {
        for (std::size_t i = 1; i < row.size(); ++i) {
            const char* const path = row[i].c_str();
            const int answer = maapi_exists(maapi.number(), maapi.thandle(), "%s", path);
            EXPECT_EQ(answer, std::stoi(row[0])) << path;
            EXPECT_EQ(answer, cdb_exists(cdb.number(), "%s", path)) << path;
        }
    }
}

TEST(Path, OfAnyKeyReadsBackTheSame) {
    Lines keys = {"plain", "", "a b", "\t", "{", "}", "a\"b", "\\", "\\\"\\", "ä€𝄞", "%s", "/"};
    keys.emplace_back("a\0b", 3);
    keys.emplace_back(300, 'k');
    for (const std::string& key : keys) {
        const std::string path = "/config/interface/l3{" + quoted_key(key) + "}/vrf";
        const DataTree tree = make_tree({path + " = red"});
        const Node* const node = tree.find(path);
        ASSERT_NE(node, nullptr) << path;
        EXPECT_EQ(node->parent->children[0]->text, key);
        confd_hkeypath_t kp;
        fill_keypath(*node, kp);
        EXPECT_EQ(keypath_text(kp), path);
        char buffer[256];
        EXPECT_EQ(confd_pp_kpath(buffer, sizeof buffer, &kp), static_cast<int>(path.size()));
        EXPECT_EQ(std::string(buffer), path.substr(0, 255).c_str()) << "cut, and ended by a NUL";
    }
    EXPECT_EQ(quoted_key("a b\"c"), R"("a b\"c")");
}

TEST(Read, OfAnythingButALeafOfItsTypeFails) {
    const Socket maapi = Socket::maapi(example());
    const Socket empty = Socket::maapi(make_tree({}));
    const int s = maapi.number();
    const int t = maapi.thandle();
    const std::string vlan = expand("$VLAN");
    int32_t number = 0;
    int flag = 0;
    EXPECT_EQ(maapi_get_int32_elem(s, t, &number, "%s", vlan.c_str()), CONFD_OK);
    EXPECT_EQ(number, -10);
    EXPECT_LT(maapi_get_bool_elem(s, t, &flag, "%s", vlan.c_str()), 0);
    EXPECT_LT(maapi_get_int32_elem(empty.number(), empty.thandle(), &number, "%s", vlan.c_str()),
              0);
    EXPECT_LT(maapi_num_instances(s, t, "%s", vlan.c_str()), 0);
    EXPECT_LT(maapi_exists(s, empty.thandle(), "/config"), 0) << "another socket's transaction";
    EXPECT_LT(cdb_exists(s, "/config"), 0) << "not a CDB socket";
    const int closed = Socket::cdb(example()).number();
    EXPECT_LT(cdb_exists(closed, "/config"), 0);
    EXPECT_STREQ(confd_lasterr(), "no such socket or transaction: /config");
}

TEST(CryptoKeys, OfAHostWithoutOneReplaceThoseOfAnEarlierOne) {
    const std::string text = encrypt(test_key(), "secret");
    std::string clear(text.size(), '\0');
    const Socket with_key = Socket::maapi(make_tree({}), test_key());
    const Socket without_key = Socket::maapi(make_tree({}));
    const auto decrypt = [&] {
        return confd_decrypt(text.data(), static_cast<int>(text.size()), clear.data());
    };
    EXPECT_EQ(maapi_install_crypto_keys(with_key.number()) + decrypt(), CONFD_OK);
    EXPECT_LT(maapi_install_crypto_keys(without_key.number()), 0);
    EXPECT_LT(decrypt(), 0);
}

}  // namespace
