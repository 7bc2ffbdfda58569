// What is written means what was read, and stays as it is when it is read and written again.
#include <gmock/gmock.h>

#include <nlohmann/json.hpp>

#include "configuration/document_writer.h"
#include "support.h"

namespace {

std::string data(const std::string& name) {
    return content_of(TEST_DATA_DIR "/" + name);
}

/// `text` read, and written like the file `like`.
std::string written(const std::string& text, const std::string& like) {
    return write_document(read(text, {false, true}), read(like, {false, true}));
}

TEST(Writer, GivesTheSameDataInEitherSyntax) {
    const std::string json = data("device.json");
    const std::string xml = data("device.xml");
    for (const std::string& text : {json, xml}) {
        EXPECT_EQ(written(text, json), json);
        EXPECT_EQ(written(text, xml), xml);
    }
}

TEST(Writer, IsCanonicalAndKeepsWhatIsNotItsOwn) {
    for (const auto& row : nlohmann::json::parse(data("written.json"))) {
        std::string expected;
        for (const auto& line : row["written"]) {
            expected += line.get<std::string>() + "\n";
        }
        EXPECT_EQ(written(row["read"], row["read"]), expected) << row["case"];
        EXPECT_EQ(written(expected, expected), expected) << row["case"];
    }
}

TEST(Writer, RefusesToTranslateWhatTheModelDoesNotDescribe) {
    const std::vector<std::pair<std::string, std::string>> rows = {
        {R"({"device:system": {"other:a": 1}})", "device.xml"},
        {R"({"device:system": {"extra": {}}})", "device.xml"},
        {R"({"device:system": {"@mtu": {}}})", "device.xml"},
        {"<system xmlns='DEVICE'><mtu xml:lang='en'>70</mtu></system>", "device.json"},
    };
    for (const auto& [text, like] : rows) {
        try {
            written(named(text), data(like));
            ADD_FAILURE() << text;
        } catch (const InputError& error) {
            EXPECT_THAT(error.what(), testing::HasSubstr("give both configurations in one format"));
        }
    }
}

}  // namespace
