// What an edit makes of a running configuration, as RFC 6241 and RFC 7950 have it.
#include <gmock/gmock.h>

#include <libyang/libyang.h>

#include "configuration/data_error.h"
#include "configuration/read_data.h"
#include "support.h"

using namespace testing;

namespace {

const std::string kRunning = R"({"device:system":{"host-name":"r1","mtu":70,
    "server":["a","b","c"],"ntp":"n"},"device:port":[
    {"slot":"s","number":1,"link":{"speed":1},"route":[{"prefix":"p"},{"prefix":"q","metric":2}]},
    {"slot":"s","number":2,"link":{"speed":2}}]})";

/// `text` without its blanks and line ends; no value has one.
std::string compact(std::string text) {
    text.erase(
        std::remove_if(text.begin(), text.end(), [](char c) { return c == ' ' || c == '\n'; }),
        text.end());
    return text;
}

Configuration merged(const std::string& edit, const Configuration* running) {
    return test_model().read(source("edit", edit), {true, false}, running);
}

/// What `edit` makes of `running`, as libyang prints it, or why it does not.
std::string edited(const std::string& running, const std::string& edit) {
    static ContextPool contexts(TEST_YANG_DIR);
    const ContextPool::Borrowed context = contexts.borrow();
    std::string result;
    const std::string refusal = refusal_of([&] {
        const Configuration before = test_model().read(source("running", running));
        ReadData data = read_data(*context, source("edit", edit), {true, false}, &before);
        ly_err_clean(context.get(), nullptr);
        if (!data.tree.validate(*context)) {
            throw data_error(*context, data.tree, data.sources);
        }
        char* printed = nullptr;
        lyd_print_mem(&printed, data.tree.first(), LYD_JSON,
                      LYD_PRINT_WITHSIBLINGS | LYD_PRINT_SHRINK | LYD_PRINT_WD_EXPLICIT);
        const std::unique_ptr<char, decltype(&std::free)> owned(printed, std::free);
        result = printed == nullptr ? "{}" : printed;
    });
    return result + refusal;
}

/// kRunning with one part replaced by another.
std::string with(const std::string& part, const std::string& by) {
    const std::string running = compact(kRunning);
    EXPECT_NE(running.find(part), std::string::npos) << part;
    return replaced(running, part, by);
}

/// What is in <config>, or in its <system>, "op" for the operation attribute, and what it makes.
struct Row {
    const char* edit;
    std::string result;
};

std::string in_config(const std::string& content) {
    const bool is_whole = content.rfind("<system", 0) == 0 || content.rfind("<port", 0) == 0;
    std::string edit = is_whole ? content : "<system>" + content + "</system>";
    edit = replaced(edit, "<system", "<system xmlns='DEVICE'");
    edit = replaced(replaced(edit, "<port", "<port xmlns='DEVICE'"), "op=", "n:operation=");
    return named("<config xmlns='BASE' xmlns:n='BASE' xmlns:y='YANG' xmlns:d='DEVICE'>\n" + edit +
                 "</config>");
}

TEST(Edit, DoesWhatEachOperationSays) {
    const std::vector<Row> rows = {
        // merge
        {"", compact(kRunning)},
        {"<mtu>71</mtu>", with("70", "71")},
        {"<port><number>02</number><slot>s</slot><link><speed>9</speed></link></port>",
         with(R"("speed":2)", R"("speed":9)")},
        {"<port><slot>t</slot><number>1</number><link><speed>3</speed></link></port>",
         with("2}}]", R"(2}},{"slot":"t","number":1,"link":{"speed":3}}])")},
        {"<port><slot>s</slot><number>2</number></port>", compact(kRunning)},
        {"<port><slot>s</slot></port>", "edit:2:45: port has no number, which is one of its keys"},
        {"<server>d</server>", with(R"("c"])", R"("c","d"])")},
        // replace
        {"<port op='replace'><slot>s</slot><number>1</number><link><speed>4</speed></link></port>",
         with(R"("link":{"speed":1},"route":[{"prefix":"p"},{"prefix":"q","metric":2}])",
              R"("link":{"speed":4})")},
        {"<system op='replace'><mtu>71</mtu><host-name op='merge'>x</host-name></system>",
         with(R"("host-name":"r1","mtu":70,"server":["a","b","c"],"ntp":"n")",
              R"("host-name":"x","mtu":71)")},
        {"<system op='replace'><mtu op='delete'/></system>", "edit:2:69: data-missing: system mtu"},
        // create
        {"<level op='create'>low</level>", with(R"("mtu":70)", R"("mtu":70,"level":"low")")},
        {"<mtu op='create'>70</mtu>", "edit:2:47: data-exists: system mtu is in run"},
        {"<port op='create'><slot>s</slot><number>1</number></port>",
         "edit:2:66: data-exists: port s 1 is in running already; write merge or replace"},
        {"<server op='create'>b</server>", "edit:2:47: data-exists: system server b"},
        // delete and remove
        {"<mtu op='delete'/>", with(R"("mtu":70,)", "")},
        {"<mtu op='remove'>71</mtu>", with(R"("mtu":70,)", "")},
        {"<level op='delete'/>",
         "edit:2:47: data-missing: system level is not in running; write remove, or leave it out"},
        {"<level op='remove'/>", compact(kRunning)},
        {"<port op='delete'><slot>s</slot><number>2</number></port>",
         with(R"(,{"slot":"s","number":2,"link":{"speed":2}})", "")},
        {"<server op='delete'>b</server>", with(R"("b",)", "")},
        {"<manual op='create'><zone op='delete'/></manual>",
         "edit:2:76: data-missing: system manual zone"},
        {"<port><slot>s</slot><number>2</number><link op='remove'><speed>1</speed></link></port>",
         "edit:2:45: Mandatory node \"speed\""},
        {"<system op='remove'><manual op='replace'/><mtu op='create'>70</mtu></system>",
         with(R"("device:system":{"host-name":"r1","mtu":70,"server":["a","b","c"],"ntp":"n"},)",
              "")},
        // nested operations
        {"<port op='merge'><slot>s</slot><number>1</number><route op='delete'><prefix>p</prefix>"
         "</route><route op='create'><prefix>r</prefix></route></port>",
         with(R"({"prefix":"p"},{"prefix":"q","metric":2}])",
              R"({"prefix":"q","metric":2},{"prefix":"r"}])")},
        {"<port><slot op='delete'>s</slot><number>1</number></port>",
         "edit:2:45: slot is a key and"},
        {"<mtu>71</mtu><mtu>72</mtu>", "edit:2:60: system mtu is given twice"},
        {"<mtu op='erase'/>", "edit:2:47: operation=\"erase\" is not known; write one of merge, "},
        {"<mtu>9001</mtu>", "edit:2:47: \"9001\" is not a value of mtu"},
        {"<extra><a op='delete'/></extra>",
         "edit:2:54: an operation inside extra, which can have any data, is not supported"},
        // choices
        {"<manual/>", with(R"("ntp":"n")", R"("manual":{})")},
        {"<ntp>m</ntp><manual/>", "edit:2:59: manual and ntp belong to two cases"},
        {"<ntp op='delete'/><manual/>", with(R"("ntp":"n")", R"("manual":{})")},
        {"<remote><host op='remove'/></remote>", compact(kRunning)},
        {"<remote><host op='create'>h</host></remote>",
         with(R"("ntp":"n")", R"("remote":{"host":"h"})")},
    };
    for (const Row& row : rows) {
        EXPECT_THAT(edited(kRunning, in_config(row.edit)), StartsWith(row.result)) << row.edit;
    }
}

TEST(Edit, PutsEntriesWhereTheUserOrdersThem) {
    const std::vector<std::pair<const char*, std::string>> rows = {
        {"<server y:insert='first'>d</server>", R"(["d","a","b","c"])"},
        {"<server y:insert='last'>a</server>", R"(["b","c","a"])"},
        {"<server y:insert='before' y:value='b'>d</server>", R"(["a","d","b","c"])"},
        {"<server y:insert='after' y:value='b' op='create'>d</server>", R"(["a","b","d","c"])"},
        {"<server y:insert='after' y:value='c'>a</server>", R"(["b","c","a"])"},
        {"<server y:insert='after' y:value='a'>a</server>",
         "edit:2:47: missing-instance: system server a is to be placed next to \"a\", which is no"},
        {"<server>a</server>", R"(["a","b","c"])"},
        {"<server y:insert='first'>c</server><server y:insert='first'>b</server>",
         R"(["b","c","a"])"},
        {"<server op='delete'>b</server><server y:insert='before' y:value='b'>d</server>",
         "edit:2:86: missing-instance: system server d is to be placed next to \"b\""},
        {"<server y:insert='before'>d</server>", "edit:2:47: missing-instance: "},
        {"<server y:insert='middle'>d</server>", "edit:2:47: insert=\"middle\" is not known"},
        {"<mtu y:insert='first'>70</mtu>", "edit:2:47: system mtu has a position"},
    };
    for (const auto& [edit, order] : rows) {
        const bool is_order = order[0] == '[';
        EXPECT_THAT(edited(kRunning, in_config(edit)),
                    StartsWith(is_order ? with(R"(["a","b","c"])", order) : order))
            << edit;
    }
    const std::string move =
        "<port><slot>s</slot><number>1</number><route y:insert='INSERT' y:key=\"[d:prefix = 'p']\">"
        "<prefix>q</prefix></route></port>";
    const std::string moved = with(R"({"prefix":"p"},{"prefix":"q","metric":2})",
                                   R"({"prefix":"q","metric":2},{"prefix":"p"})");
    EXPECT_EQ(edited(kRunning, in_config(replaced(move, "INSERT", "before"))), moved);
    EXPECT_EQ(edited(kRunning, in_config(replaced(move, "INSERT", "after"))), compact(kRunning));
    EXPECT_THAT(
        edited(kRunning, in_config(replaced(replaced(move, "INSERT", "after"), "'p'", "'x'"))),
        HasSubstr("missing-instance: port s 1 route q is to be placed next to"));
}

TEST(Edit, FollowsTheDefaultOperation) {
    const std::string edit =
        "<rpc xmlns='BASE'><edit-config><target><running/></target><default-operation>DEFAULT"
        "</default-operation><test-option>set</test-option><config>DATA</config></edit-config></"
        "rpc>";
    const std::string system = "<system xmlns='DEVICE' xmlns:n='BASE'>";
    const std::string set = system + "<mtu>71</mtu></system>";
    const std::vector<std::tuple<std::string, std::string, std::string>> rows = {
        {"merge", set, with("70", "71")},
        {"replace", set, R"({"device:system":{"mtu":71}})"},
        {"none", set, compact(kRunning)},
        {"none", system + "<mtu n:operation='delete'/></system>", with(R"("mtu":70,)", "")},
        {"none", system + "<manual n:operation='create'/></system>", ""},
        {"none", system + "<level>low</level></system>",
         "edit:1:271: data-missing: system level is not in running, and the default"},
    };
    for (const auto& [operation, data, result] : rows) {
        const std::string whole = replaced(replaced(edit, "DEFAULT", operation), "DATA", data);
        EXPECT_THAT(edited(kRunning, named(whole)), StartsWith(result)) << operation;
    }
}

TEST(Edit, TakesAwayWhatTheModelNoLongerAllows) {
    const std::string running = R"({"device:system":{"mtu":70,"slow":[null]}})";
    EXPECT_EQ(edited(running, in_config("<mtu>71</mtu>")), R"({"device:system":{"mtu":71}})");
    EXPECT_THAT(edited(running, in_config("<mtu>71</mtu><slow/>")),
                StartsWith("edit:2:60: When condition"));
    EXPECT_THAT(
        edited(running, named("<config xmlns='BASE' xmlns:n='BASE' n:operation='delete'/>")),
        StartsWith("edit:1:1: an operation at <config> is not supported"));
}

TEST(Edit, OfJsonIsMerged) {
    EXPECT_EQ(edited(kRunning, R"({"device:system": {"mtu": 71, "server": ["d"]}})"),
              replaced(with("70", "71"), R"("c"])", R"("c","d"])"));
}

TEST(Edit, StandsWhereItWasWritten) {
    const Configuration running = read(kRunning);
    const Configuration candidate = merged(
        "\n{\"device:port\":\n[{\"slot\": \"s\", \"number\": 2,\n\"link\": {\"speed\": 7}}]}",
        &running);
    const std::vector<std::pair<std::string, std::string>> rows = {
        {"/port{s 2}", "edit:3:3"},
        {"/port{s 2}/link/speed", "edit:4:10"},
        {"/port{s 1}", "file:3:6"},
        {"/port{s 1}/link/speed", "file:3:36"},
        {"/system/host-name", "file:1:19"}};
    for (const auto& [path, place] : rows) {
        EXPECT_EQ(place_of(candidate, path), place) << path;
    }
    EXPECT_EQ(candidate.name(), "edit");
}

TEST(Edit, CountsTheDataThatNobodyLooksAt) {
    const Configuration running = read(R"({"other:a": {"b": 1}, "device:system": {"mtu": 70}})");
    const Configuration candidate =
        merged(R"({"device:system": {"more:x": 1}, "other:a": {"b": 2}})", &running);
    EXPECT_EQ(candidate.unknown_data.nodes, 5U);
    EXPECT_THAT(candidate.unknown_data.modules, ElementsAre("other", "more"));
}

TEST(Edit, NeedsARunningConfiguration) {
    const Configuration empty{{}, {}, local_platform::DataTree(test_model().schema())};
    for (const char* const edit : {"{}", "<edit-config xmlns='BASE'><config/></edit-config>"}) {
        for (const Configuration* const running : {&empty, (const Configuration*)nullptr}) {
            EXPECT_THAT(refusal_of([&] { merged(named(edit), running); }), HasSubstr("--running"));
        }
    }
}

}  // namespace
