// What reads answer, and when they fail.
#include "call_hook.h"
#include "confd_cdb.h"
#include "confd_maapi.h"
#include "crypto_key.h"
#include "platform_error.h"
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

/// The first keys that `cursor` delivers from where it is, each with its count of keys.
Strings rest_of(maapi_cursor& cursor) {
    Strings keys;
    while (maapi_get_next(&cursor) == CONFD_OK && cursor.n != 0) {
        char text[8];
        confd_pp_value(text, sizeof text, &cursor.keys[0]);
        keys.push_back(text + std::to_string(cursor.n));
    }
    return keys;
}

TEST(Cursor, WalksAListFromItsStartWheneverItIsOpened) {
    const std::string l3 = "/config/interface/l3";
    const Socket socket = Socket::maapi(tree_of(
        router_model(), {{l3 + "{b}/tunnel{x 1}"}, {l3 + "{b}/tunnel{y 2}"}, {l3 + "{a}"}}));
    maapi_cursor cursor;
    const auto open = [&](const std::string& list) {
        return maapi_init_cursor(socket.number(), socket.thandle(), &cursor, "%s", list.c_str());
    };
    const std::tuple<std::string, int, Strings> cases[] = {
        {l3, CONFD_OK, {"b1", "a1"}},  // document order
        {l3 + "{b}/tunnel", CONFD_OK, {"x2", "y2"}},
        {l3 + "{a}/tunnel", CONFD_OK, {}},
        {l3 + "{a}", CONFD_ERR, {}},
    };
    for (const auto& [path, answer, keys] : cases) {
        EXPECT_EQ(open(l3), CONFD_OK);
        EXPECT_EQ(maapi_get_next(&cursor), CONFD_OK);
        EXPECT_EQ(open(path), answer) << "opened again, half-way: " << path;
        EXPECT_EQ(cursor.n, 0) << "before the first entry";
        EXPECT_EQ(rest_of(cursor), keys) << path;
        EXPECT_EQ(rest_of(cursor), Strings()) << "at the end";
    }
    EXPECT_EQ(open(l3), CONFD_OK);
    maapi_destroy_cursor(&cursor);
    EXPECT_EQ(rest_of(cursor), Strings()) << "closed";
}

TEST(Print, CutsOrLeavesAnEmptyTextWhenItFails) {
    confd_value_t number{};
    number.type = C_INT32;
    number.val.i32 = INT32_MIN;
    confd_hkeypath_t nothing{};
    std::string buffer(8, '#');
    EXPECT_EQ(confd_pp_value(buffer.data(), 4, &number), 11);
    EXPECT_EQ(confd_pp_value(buffer.data(), 0, &number), 11);
    EXPECT_EQ(buffer, std::string("-21\0####", 8));
    EXPECT_EQ(confd_pp_kpath(buffer.data(), 8, &nothing), CONFD_ERR);
    EXPECT_STREQ(buffer.c_str(), "");
}

TEST(Value, IsOneOfItsTypeAndPrintedInItsCanonicalForm) {
    const std::string longest = "0000:0000:0000:0000:0000:FFFF:255.255.255.255";
    const struct {
        confd_vtype type;
        std::vector<std::pair<std::string, std::string>> texts;
        Strings refused;
    } kCases[] = {
        {C_INT32, {{"-2147483648", "-2147483648"}, {"007", "7"}}, {"2147483648", "1 ", "", "+1"}},
        {C_UINT8, {{"0", "0"}, {"255", "255"}}, {"256", "-1"}},
        {C_BOOL, {{"true", "true"}, {"false", "false"}}, {"TRUE", "1"}},
        {C_ENUM_VALUE, {{"low", "3"}, {"high", "0"}}, {"3", "lo"}},
        {C_IPV4, {{"192.0.2.1", "192.0.2.1"}}, {"192.0.2.1/24", "192.0.2", {"192.0.2.1\0", 10}}},
        {C_IPV6, {{longest, "::ffff:255.255.255.255"}}, {std::string(51, '0')}},
        {C_IPV4_AND_PLEN,
         {{"10.1.2.3/0", "10.1.2.3/0"}, {"10.1.2.3/32", "10.1.2.3/32"}},
         {"10.1.2.3/33", "10.1.2.3/", "10/8", "10.1.2.3", "10.1.2.3/-1", "/8"}},
        {C_IPV6_AND_PLEN, {{longest + "/128", "::ffff:255.255.255.255/128"}}, {"::/129"}},
        {C_BUF, {{"", ""}, {"ä \"b", "ä \"b"}}, {}},
    };
    for (const auto& [type, texts, refused] : kCases) {
        SchemaNode node = leaf("leaf", type);
        node.enums = {{3, "low"}, {0, "high"}};
        const auto model = std::make_shared<const SchemaNode>(container("", {node}));
        for (const auto& [text, expected] : texts) {
            char shown[64];
            const DataTree tree = tree_of(model, {{"leaf", text}});
            const confd_value_t value = tree.find("leaf")->value();
            confd_pp_value(shown, sizeof shown, &value);
            EXPECT_EQ(shown, expected) << text << " of type " << type;
        }
        for (const std::string& text : refused) {
            EXPECT_THROW(tree_of(model, {{"leaf", text}}), PlatformError) << text << " of " << type;
        }
    }
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
