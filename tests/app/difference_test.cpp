// What changes between two configurations, as the operator reads it.
#include "configuration/difference.h"

#include <gmock/gmock.h>

#include "configuration/yang_model.h"
#include "reports/difference_report.h"

namespace {

/// The changes between two contents of the model's "top".
std::vector<Change> changes(const std::string& running, const std::string& candidate) {
    static const YangModel model{TEST_YANG_DIR};
    const auto tree = [](const std::string& top) {
        return model.read(configuration_from_bytes("text", "{\"places:top\": {" + top + "}}"));
    };
    return difference(tree(running), tree(candidate));
}

/// The user-ordered list with one entry for each letter.
std::string hops(const std::string& names) {
    std::string list;
    for (const char name : names) {
        list += std::string(list.empty() ? "" : ", ") + R"({"name": ")" + name + "\"}";
    }
    return "\"hop\": [" + list + "]";
}

std::string pairs(const std::string& list) {
    return "\"section\": {\"pair\": [" + list + "]}";
}

TEST(Difference, IsToldInTheOperatorsWords) {
    struct Row {
        std::string running;
        std::string candidate;
        std::string shown;
    };
    const std::string one = R"({"first": "a", "second": 1, "size": 5})";
    const std::string two = R"({"first": "b", "second": 2})";
    const std::vector<Row> rows = {
        {"", "", ""},
        {pairs(one + "," + two), pairs(two + "," + one), ""},
        {"", R"("flag": [null])", "+ top flag\n"},
        {pairs(one), pairs(R"({"first": "a", "second": 1, "size": 6})"),
         "  top section pair a 1\n    ~ size 5 → 6\n"},
        {pairs(one), pairs(one + "," + two), "+ top section pair b 2\n"},
        {pairs(one + "," + two), pairs(two), "- top section pair a 1\n    - size 5\n"},
        {pairs(one), "\"flag\": [null]", "+ top flag\n- top section pair a 1\n    - size 5\n"},
        {R"("password": "one")", R"("password": "two")", "~ top password (secret)\n"},
        {R"("password": "one")", "", "- top password (secret)\n"},
        {hops("abcd"), hops("abcd"), ""},
        {hops("abcd"), hops("bcda"), "~ top hop a moved: first → after d\n"},
        {hops("abcd"), hops("dabc"), "~ top hop d moved: after c → first\n"},
        {hops("abc"), hops("xbc"), "- top hop a\n+ top hop x\n"},
        {hops("abcde"), hops("edc"),
         "- top hop a\n- top hop b\n~ top hop e moved: after d → first\n"
         "~ top hop d moved: after c → after e\n"},
    };
    for (const auto& [running, candidate, shown] : rows) {
        EXPECT_EQ(format_difference_text(changes(running, candidate), false), shown)
            << running << "\nto " << candidate;
    }
}

TEST(Difference, OfAnEntryNamesItsPathAndWhatItHeld) {
    const auto found = changes(pairs(R"({"first": "a b", "second": 1, "size": 5})"), "");
    ASSERT_EQ(found.size(), 2U);
    EXPECT_EQ(found[0].path, "/top/section/pair[\"a b\" \"1\"]");
    EXPECT_FALSE(found[0].old_value.has_value());
    EXPECT_EQ(found[1].path, "/top/section/pair[\"a b\" \"1\"]/size");
    EXPECT_EQ(found[1].old_value, "5");
    EXPECT_FALSE(found[1].new_value.has_value());
}

}  // namespace
