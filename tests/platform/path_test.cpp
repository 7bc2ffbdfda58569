// Paths: what they name, and that none built from a name leads to another entry.
#include "confd_cdb.h"
#include "confd_maapi.h"
#include "keypath.h"
#include "platform_error.h"
#include "socket.h"
#include "support.h"

using namespace local_platform;

namespace {

const std::string kL3 = "/config/interface/l3";

/// Every sequence of up to `longest` of `pieces`.
Strings sequences(const Strings& pieces, int longest) {
    Strings all = {""};
    std::size_t begin = 0;
    for (int length = 0; length < longest; ++length) {
        for (const std::size_t end = all.size(); begin < end; ++begin) {
            for (const std::string& piece : pieces) {
                all.push_back(all[begin] + piece);
            }
        }
    }
    return all;
}

/// The keypath of `node` as it is printed, into a buffer of a plug-in's too.
std::string printed(const Node& node) {
    confd_hkeypath_t kp;
    fill_keypath(node, kp);
    for (int i = 0; i < kp.len; ++i) {
        EXPECT_TRUE(kp.v[i][0].type != C_XMLTAG || kp.v[i][1].type == C_NOEXISTS) << "one tag";
    }
    std::string text = keypath_text(kp);
    char buffer[256];
    EXPECT_EQ(confd_pp_kpath(buffer, sizeof buffer, &kp), static_cast<int>(text.size()));
    EXPECT_EQ(std::string(buffer), text.substr(0, 255).c_str()) << "cut, and ended by a NUL";
    return text;
}

TEST(Path, NamesANodeOrIsAnError) {
    const struct {
        int answer;
        Strings below;  ///< "/config/interface/l3"
    } kCases[] = {
        {1, {"", "{a}/vlan", "[\"a\"]", "{a}/address{2001:DB8:0::1/64}", "{[\\]%s/}", "{x\\y}"}},
        {1, {"{a}/address[\"2001:db8::1/64\"]/ip", "{a}/tunnel{b 007}/cost", "[\"x\\\\y\"]"}},
        {1, {"{a}/tunnel[\"\\b\" \"7\"]"}},
        {0, {"{a}/vrf", "{b}", "{b}/vrf", "{b}/address", "[\"\"]", "{a}/tunnel{7 7}/cost"}},
        {-1, {"/", "//", "{a}/none", "{a}/vlan/none", "{a}/vlan{a}", "/vlan", "{", "{a", "{a}}"}},
        {-1, {"{a}vlan", "{a}{a}", "{{a}", "{}", "{ }", "{ a}", "{a }", "{a a}", "{\ta}", "{\"}"}},
        {-1, {"{\"a\"}", "{a\"b\"}", "{\"a\"b}", "{\"a}", "[", "[]", "[a]", "[\"a\"}", "[\"a]"}},
        {-1, {"[\"a\"", "[\"a\\\"]", "[\"a\\", "[ \"a\"]", "[\"a\" ]", "[\"a\"\"a\"]", "}"}},
        {-1, {"{a b c d e f g h i j k}", "{a}/tunnel{b}", "{a}/tunnel{b  7}", "{a}/tunnel{b\t7}"}},
        {-1, {"{a}/tunnel{b 256}", "{a}/address{2001:db8::1}"}},
    };
    const DataTree tree = tree_of(router_model(), {{kL3 + "{a}/vlan", "-10"},
                                                   {kL3 + "{a}/address{2001:db8::1/64}"},
                                                   {kL3 + "{a}/tunnel{b 7}/cost", "1"},
                                                   {kL3 + "{x\\y}"},
                                                   {kL3 + "{[\\]%s/}"}});
    std::vector<std::pair<std::string, int>> asked = {
        {"", 1}, {"/", 1}, {"config/interface/l3{a}", 1}, {"//config", -1}, {"/config{a}", -1}};
    for (const auto& [answer, paths] : kCases) {
        for (const std::string& path : paths) {
            asked.emplace_back(kL3 + path, answer);
        }
    }
    const Socket maapi = Socket::maapi(tree);
    const Socket cdb = Socket::cdb(tree);
    // Once, the same again, and again in another order.
    for (const std::size_t step : {1, 1, 13}) {
        for (std::size_t i = 0; i < asked.size(); ++i) {
            const auto& [path, answer] = asked[i * step % asked.size()];
            const char* const text = path.c_str();
            EXPECT_EQ(maapi_exists(maapi.number(), maapi.thandle(), "%s", text), answer) << path;
            EXPECT_EQ(cdb_exists(cdb.number(), "%s", text), answer) << path;
        }
    }
    EXPECT_LT(maapi_exists(maapi.number(), maapi.thandle(), "%s", asked.back().first.c_str()), 0);
    EXPECT_EQ(confd_lasterr(), "a key is no value of its type: " + asked.back().first);
}

TEST(Path, BuiltFromANameLeadsToThatNameOnly) {
    Strings names = sequences({"a", " ", "\t", "\n", "\"", "\\", "{", "}", "/", "[", "]", "%s"}, 4);
    for (const char* const name :
         {"\"a b\"", "a\" \"b", "a}/vrf", "a}/address{::1/64", "a}/tunnel{a 7", "ä€𝄞", "\r",
          "a}/tunnel[\"a\" \"7\"", "a}/tunnel{a 7}/cost", "config/interface/l3{a}"}) {
        names.emplace_back(name);
    }
    names.emplace_back(300, 'k');
    TreeBuilder builder(router_model());
    builder.set(kL3 + "{a}/tunnel{a 7}/cost", "1").set(kL3 + "{a}/address{::1/64}");
    for (const std::string& name : names) {
        builder.set(kL3 + keys_text({name}) + "/address{::/0}");
    }
    const DataTree tree = std::move(builder).build();
    const Socket socket = Socket::maapi(tree);
    const Node& l3 = *tree.find(kL3);
    ASSERT_EQ(l3.children.size(), names.size());
    for (const auto& entry : l3.children) {
        const std::string name(entry->text);
        const Node& ip = *tree.find(kL3 + keys_text({name}) + "/address{::/0}/ip");
        EXPECT_EQ(ip.parent->parent->parent, entry);
        EXPECT_EQ(tree.find(printed(ip)), &ip) << printed(ip);
        const std::string path = kL3 + ("{" + name + "}/address{::/0}/ip");
        const int answer = maapi_exists(socket.number(), socket.thandle(), "%s", path.c_str());
        EXPECT_EQ(answer, is_addressable(name) ? 1 : -1) << path;
        EXPECT_TRUE(answer != 1 || tree.find(path) == &ip) << path;
    }
    EXPECT_FALSE(is_addressable(std::string("a\0b", 3))) << "no C text holds it";
}

TEST(Path, IsNotBuiltFromANameThatSpellsOneToAnEntryOfAListLikeItsOwn) {
    const auto set = [](const char* nested_leaf, const std::string& entry) -> std::string {
        const SchemaNode nested = list("sub", {"key"}, {leaf(nested_leaf, C_BUF)});
        const Model model = std::make_shared<const SchemaNode>(container(
            "", {list("top", {"name"}, {leaf("size", C_BUF), nested}), list("other", {"id"}, {})}));
        try {
            tree_of(model, {{"top{x}/sub{z}"}, {entry + keys_text({"x}/sub{z"})}});
            return "";
        } catch (const PlatformError& error) {
            return error.what();
        }
    };
    EXPECT_EQ(set("size", "top"),
              "top[\"x}/sub{z\"]: the key \"x}/sub{z\" spells a path to another entry; "
              "rename the entry");
    EXPECT_EQ(set("id", "top"), "") << "which has no such leaf";
    EXPECT_NE(set("size", "other"), "");
}

TEST(Path, OfSeveralKeysOrALabelIsPrintedAsItIsRead) {
    const Strings paths = {kL3 + "{a}/tunnel{b 7}", kL3 + "{a}/tunnel[\"b c\" \"7\"]",
                           "/router/vrrp/interface{a}/address-family[\"both of \\\"them\\\"\"]"};
    const DataTree tree = tree_of(router_model(), {{paths[0]}, {paths[1]}, {paths[2]}});
    for (const std::string& path : paths) {
        EXPECT_EQ(printed(*tree.find(path)), path);
    }
    EXPECT_THROW(keys_text(Strings(MAXKEYLEN, "k")), PlatformError);
}

}  // namespace
