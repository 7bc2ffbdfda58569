/// Every example brings about exactly what it says.
#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>
#include <nlohmann/json.hpp>

#include "command.h"

using nlohmann::json;
namespace fs = std::filesystem;

TEST(Examples, EveryMessageIsBroughtAbout) {
    const Folder folder;
    ASSERT_EQ(run({"keygen", folder / "key"}).status, 0);
    int examples = 0;
    for (const auto& example : fs::directory_iterator(VRRP_VALID_EXAMPLES "/messages")) {
        SCOPED_TRACE(example.path());
        ++examples;
        const json expected = json::parse(content_of(example.path() / "expected.json"));
        Arguments arguments = expected["arguments"];
        std::replace(arguments.begin(), arguments.end(), std::string("KEY"), folder / "key");
        if (fs::exists(example.path() / "running.json")) {
            arguments.insert(arguments.end(), {"--running", example.path() / "running.json"});
        }
        const bool is_xml = fs::exists(example.path() / "candidate.xml");
        arguments.push_back(example.path() / (is_xml ? "candidate.xml" : "candidate.json"));
        arguments.insert(arguments.begin(), {"check", "--format", "json"});

        const Outcome outcome = run(arguments);
        EXPECT_EQ(outcome.status, expected["exit"]) << outcome.err;
        const json report = json::parse(outcome.out);
        EXPECT_EQ(report["candidate"], arguments.back());
        EXPECT_EQ(report["valid"], expected["exit"] != 1);
        EXPECT_GE(report["requests"], 7);
        EXPECT_EQ(report["findings"], expected["findings"]);
        EXPECT_EQ(report.size(), 4U);
    }
    EXPECT_GE(examples, 22);
}
