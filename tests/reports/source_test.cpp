// Lines of a configuration beside a finding.
#include <gtest/gtest.h>

#include "reports/source_lines.h"

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
    const auto source = std::make_shared<SourceText>("f", "{\"p\": \"s3cr\xc3\xb6t\", \"a\": 1}");
    source->hide(7, 14);
    EXPECT_EQ(source->line(1), "{\"p\": \"" + std::string(6, kMask) + "\", \"a\": 1}");
    const std::vector<std::shared_ptr<const SourceText>> sources = {source};
    EXPECT_EQ(SourceLines(sources).excerpt({"f", 1, 2})->after, ": \"(secret)\", \"a\": 1}");
}

}  // namespace
