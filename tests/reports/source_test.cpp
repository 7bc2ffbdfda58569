// Lines of a configuration beside a finding.
#include "reports/source_lines.h"

#include <gtest/gtest.h>

namespace {

struct Row {
    std::string text;
    Location location;
    std::string shown;  ///< the line with the marked part in «»
};

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
        {wide, {"f", 1, 0}, std::string(96, 'x') + "…«»"},
        {"<" + wide.substr(1, 46) + "€", {"f", 1, 1}, "«<" + wide.substr(1, 46) + "…»"},
        {"a\nb", {"f", 2, 9}, "b«»"},
        {"a\nb", {"other", 1, 1}, ""},
        {"a\nb", {"f", 0, 0}, ""}};
    for (const Row& row : rows) {
        Report report;
        report.sources = {std::make_shared<SourceText>("f", row.text)};
        std::string shown;
        if (const SourceText* const source = source_of(report, row.location)) {
            const Excerpt line = excerpt(*source, row.location.line, row.location.column);
            shown = line.before + "«" + line.marked + "»" + line.after;
        }
        EXPECT_EQ(shown, row.shown) << row.text;
    }
}

}  // namespace
