// Lines of a configuration beside a finding.
#include <gtest/gtest.h>

#include "checking/masked_text.h"
#include "reports/source_lines.h"
#include "text/utf8.h"

namespace {

struct Row {
    std::string text;
    Location location;
    std::string shown;  ///< the line with the marked part in «»
};

std::string shown(const Row& row) {
    const std::vector<std::shared_ptr<const SourceText>> sources = {
        std::make_shared<SourceText>("f", row.text)};
    const auto excerpt = SourceLines(sources).excerpt(row.location);
    return excerpt ? excerpt->before + "«" + excerpt->marked + "»" + excerpt->after : "";
}

TEST(SourceLines, MarkTheNameAtAPlace) {
    const std::string wide(400, 'x');
    std::string long_shown = "…" + std::string(48, 'x');
    long_shown += "«\"a\"»" + std::string(48, 'x') + "…";
    const Row rows[] = {
        {"{\n  \"id\": 5\r\n}", {"f", 2, 3}, "  «\"id\"»: 5"},
        {"\xef\xbb\xbf{\"a\\\"b\": 1}", {"f", 1, 2}, "{«\"a\\\"b\"»: 1}"},
        {"<ä><vr:id>5</vr:id>", {"f", 1, 4}, "<ä>«<vr:id»>5</vr:id>"},
        {"\t\033[2J\"a\" \u202e", {"f", 1, 6}, " \\x1b[2J«\"a\"» \\u202e"},
        {wide + "\"a\"" + wide, {"f", 1, 401}, long_shown},
        {"a\nb", {"f", 2, 9}, "b«»"},
        {"a\nb", {"f", 3, 1}, ""},
        {"a\nb", {"other", 1, 1}, ""},
        {"a\nb", {"f", 0, 0}, ""},
    };
    for (const Row& row : rows) {
        EXPECT_EQ(shown(row), row.shown) << row.text;
    }
}

TEST(SourceLines, ShowNoSecret) {
    local_platform::SchemaNode leaf;
    leaf.name = "password";
    leaf.is_encrypted = true;
    local_platform::SchemaNode root;
    root.children = {leaf};
    const std::string rows[] = {
        R"({"password": "s3cret", "a": 1})",
        R"({"m:password" : "s3\"cr\\et", "a": 1})",
        "{\"password\":\n\"s3cret\", \"a\": 1}",
        R"({"b": "password", "password": 88888888, "a": 1})",
        "<p:password xmlns:p=\"u\">s3cret</p:password> \"a\": 1",
        "<password>\n<![CDATA[s3cr<et]]>\n<!--password--></password> \"a\": 1",
        "<passwords>x</passwords><password>s3cret</password > \"a\": 1",
        "<password/><a>b</a><password>s3cröt</password> \"a\": 1",
    };
    for (const std::string& text : rows) {
        const std::string masked = masked_text(text, root);
        EXPECT_EQ(masked.find("cr"), std::string::npos) << masked;
        EXPECT_EQ(masked.find('8'), std::string::npos) << masked;
        EXPECT_EQ(std::count(masked.begin(), masked.end(), '\n'),
                  std::count(text.begin(), text.end(), '\n'));
        EXPECT_EQ(count_characters(masked), count_characters(text)) << "columns moved";
        EXPECT_NE(masked.find("\"a\": 1"), std::string::npos) << "too much is masked: " << masked;
    }
    EXPECT_EQ(shown({masked_text(rows[0], root), {"f", 1, 2}, {}}),
              "{«\"password\"»: \"(secret)\", \"a\": 1}");
    for (const char* const text : {"{\"password\": \"s3", "<password>s3", "password",
                                   "\"password\"", "\"password\" :", "<password"}) {
        EXPECT_EQ(masked_text(text, root).find("s3"), std::string::npos) << text;
    }
}

}  // namespace
