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

/// The path that a rule builds from `name`.
std::string built_path(const std::string& list, const std::string& name, const char* suffix) {
    std::string path = list + "{";
    return path.append(name).append("}").append(suffix);
}

/// Expects that `path`, built by putting `name` between braces, names `own` or is an error: what
/// is_addressable() says of the name.
void expect_own_or_error(const DataTree& tree, const Socket& socket, const std::string& name,
                         const std::string& path, const Node& own) {
    const int answer = maapi_exists(socket.number(), socket.thandle(), "%s", path.c_str());
    EXPECT_EQ(answer, is_addressable(name) ? 1 : -1) << path;
    EXPECT_TRUE(answer != 1 || tree.find(path) == &own) << path;
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
        Strings paths;
    } kCases[] = {
        {1, {"", "/", "/config", "config/interface/l3{a}", kL3, kL3 + "{a}/vlan", kL3 + "[\"a\"]"}},
        {1, {kL3 + "{a}/address{2001:DB8:0::1/64}", kL3 + "{a}/address[\"2001:db8::1/64\"]/ip"}},
        {1, {kL3 + "{a}/tunnel{b 007}/cost", kL3 + "{a}/tunnel[\"\\b\" \"7\"]"}},
        {1, {kL3 + "{x\\y}", kL3 + "[\"x\\\\y\"]", kL3 + "{[\\]%s/}"}},
        {1, {"router/vrrp/interface{l3-a}/address-family{ipv4}/vr-id{05}/version"}},
        {0, {kL3 + "{a}/vrf", kL3 + "{b}", kL3 + "{b}/vrf", kL3 + "{b}/address", kL3 + "[\"\"]"}},
        {0, {kL3 + "{a}/tunnel{7 7}/cost", kL3 + "[\"xy\"]"}},
        {-1,
         {"//", "//config", "/config/", "/config//interface", "/none", "/config{a}", "config}"}},
        {-1, {kL3 + "{a}/none", kL3 + "{a}/vlan/none", kL3 + "{a}/vlan{a}", kL3 + "/vlan"}},
        {-1, {kL3 + "{", kL3 + "{a", kL3 + "{a}}", kL3 + "{a}vlan", kL3 + "{a}{a}", kL3 + "{{a}"}},
        {-1, {kL3 + "{}", kL3 + "{ }", kL3 + "{ a}", kL3 + "{a }", kL3 + "{a a}", kL3 + "{\ta}"}},
        {-1, {kL3 + "{\"a\"}", kL3 + "{a\"b\"}", kL3 + "{\"a\"b}", kL3 + "{\"a}", kL3 + "{\"}"}},
        {-1, {kL3 + "[", kL3 + "[]", kL3 + "[a]", kL3 + "[\"a\"}", kL3 + "[\"a]", kL3 + "[\"a\""}},
        {-1, {kL3 + "[\"a\\\"]", kL3 + "[\"a\\", kL3 + "[ \"a\"]", kL3 + "[\"a\" ]"}},
        {-1, {kL3 + "[\"a\"\"a\"]", kL3 + "{a b c d e f g h i j k}"}},
        {-1, {kL3 + "{a}/tunnel{b}", kL3 + "{a}/tunnel{b  7}", kL3 + "{a}/tunnel{b\t7}"}},
        {-1, {kL3 + "{a}/tunnel{b 256}", kL3 + "{a}/address{2001:db8::1}"}},
        {-1, {"router/vrrp/interface{l3-a}/address-family{ipv5}"}},
    };
    const DataTree tree =
        tree_of(router_model(),
                {{kL3 + "{a}/vlan", "-10"},
                 {kL3 + "{a}/address{2001:db8::1/64}"},
                 {kL3 + "{a}/tunnel{b 7}/cost", "1"},
                 {kL3 + "{x\\y}"},
                 {kL3 + "{[\\]%s/}"},
                 {"router/vrrp/interface{l3-a}/address-family{ipv4}/vr-id{5}/version", "3"}});
    const Socket maapi = Socket::maapi(tree);
    const Socket cdb = Socket::cdb(tree);
    std::vector<std::pair<std::string, int>> asked;
    for (const auto& [answer, paths] : kCases) {
        for (const std::string& path : paths) {
            asked.emplace_back(path, answer);
        }
    }
    // Once, the same again, and again in another order.
    for (const std::size_t step : {1, 1, 13}) {
        for (std::size_t i = 0; i < asked.size(); ++i) {
            const auto& [path, answer] = asked[i * step % asked.size()];
            const char* const text = path.c_str();
            EXPECT_EQ(maapi_exists(maapi.number(), maapi.thandle(), "%s", text), answer) << path;
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
         {"\"a b\"", "a\" \"b", "[\"a\"]", "a}/vrf", "a}/address{::1/64", "a}/tunnel{a 7", "ä€𝄞",
          "\r", "a}/tunnel[\"a\" \"7\"", "a}/tunnel{a 7}/cost", "config/interface/l3{a}"}) {
        names.emplace_back(name);
    }
    names.emplace_back(300, 'k');
    TreeBuilder builder(router_model());
    builder.set(kL3 + "{a}/tunnel{a 7}/cost", "1").set(kL3 + "{a}/address{::1/64}");
    for (const std::string& name : names) {
        builder.set(kL3 + keys_text({name}) + "/vrf", "red");
        builder.set(kL3 + keys_text({name}) + "/address{::/0}");
    }
    const DataTree tree = std::move(builder).build();
    const Socket socket = Socket::maapi(tree);
    const Node& l3 = *tree.find(kL3);
    ASSERT_EQ(l3.children.size(), names.size());
    for (const auto& entry : l3.children) {
        const std::string name(entry->text);
        const std::string path = kL3 + keys_text({name});
        const Node& vrf = *tree.find(path + "/vrf");
        const Node& ip = *tree.find(path + "/address{::/0}/ip");
        EXPECT_EQ(vrf.parent, entry);
        expect_own_or_error(tree, socket, name, built_path(kL3, name, "/vrf"), vrf);
        expect_own_or_error(tree, socket, name, built_path(kL3, name, "/address{::/0}/ip"), ip);
        EXPECT_EQ(tree.find(printed(ip)), &ip) << printed(ip);
    }
    EXPECT_FALSE(is_addressable(std::string("a\0b", 3))) << "no C text holds it";
}

TEST(Path, IsNotBuiltFromANameThatSpellsOneToAnEntryOfAListLikeItsOwn) {
    const auto model = [](const char* nested_leaf) {
        SchemaNode nested = list("sub", {"key"}, {leaf(nested_leaf, C_BUF)});
        return std::make_shared<const SchemaNode>(
            container("", {list("top", {"name"}, {leaf("size", C_BUF), std::move(nested)}),
                           list("other", {"name"}, {})}));
    };
    int refused = 0;
    for (const std::string& name : sequences({"x", "}/", "sub", "{", "z", " "}, 5)) {
        const std::string own = "top" + keys_text({name});
        TreeBuilder builder(model("size"));
        builder.set("top{x}/sub{z}/size", "1").set("top{z}/sub{z}/size", "1");
        try {
            builder.set(own + "/size", "1");
        } catch (const PlatformError& error) {
            const std::string refusal = "\" spells a path to another entry; rename the entry";
            EXPECT_EQ(error.what(), own + "/size: the key \"" + name + refusal);
            ++refused;
            continue;
        }
        const DataTree tree = std::move(builder).build();
        expect_own_or_error(tree, Socket::maapi(tree), name, built_path("top", name, "/size"),
                            *tree.find(own + "/size"));
    }
    EXPECT_GT(refused, 0);
    tree_of(model("other"), {{"top" + keys_text({"x}/sub{z"})}});
    EXPECT_THROW(tree_of(model("size"), {{"other" + keys_text({"x}/sub{z"})}}), PlatformError);
}

TEST(Path, OfSeveralKeysOrALabelIsPrintedAsItIsRead) {
    const Strings paths = {kL3 + "{a}/tunnel{b 7}", kL3 + "{a}/tunnel[\"b c\" \"7\"]",
                           "/router/vrrp/interface{a}/address-family[\"both of \\\"them\\\"\"]"};
    const DataTree tree = tree_of(router_model(), {{paths[0]}, {paths[1]}, {paths[2]}});
    for (const std::string& path : paths) {
        EXPECT_EQ(printed(*tree.find(path)), path);
    }
    EXPECT_THROW(keys_text({}), PlatformError);
    EXPECT_THROW(keys_text(Strings(MAXKEYLEN, "k")), PlatformError);
}

}  // namespace
