/// Every example causes the message that it is for, and the command explains it.
#include <fnmatch.h>

#include <algorithm>
#include <nlohmann/json.hpp>
#include <regex>
#include <sstream>

#include "command.h"

using nlohmann::json;
namespace fs = std::filesystem;

namespace {

/// Whether the command explains the message of `finding`; "<name>" in what it tells stands for any
/// text.
bool is_explained(const json& finding) {
    const std::string severity = "  " + finding["severity"].get<std::string>() + " ";
    const std::string message = finding["message"];
    std::istringstream lines(run({"explain", finding["rule"]}).out);
    bool is_told = false;
    for (std::string line; std::getline(lines, line);) {
        const std::string text = line.substr(std::min<std::size_t>(line.size(), 12));
        const std::string pattern = std::regex_replace(text, std::regex("<[^>]*>"), "*");
        is_told |= line.find(severity) == 0 && fnmatch(pattern.c_str(), message.c_str(), 0) == 0;
    }
    return is_told;
}

}  // namespace

TEST(Examples, FindAndExplainWhatEachExampleSays) {
    const Folder folder;
    ASSERT_EQ(run({"keygen", folder / "key"}).status, 0);
    for (const auto& example : fs::directory_iterator(VRRP_VALID_EXAMPLES "/messages")) {
        SCOPED_TRACE(example.path());
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
        const json report = json::parse(outcome.out)["reports"][0];
        EXPECT_EQ(report["candidate"], arguments.back());
        EXPECT_EQ(report["valid"], expected["exit"] != 1);
        EXPECT_GT(report["requests"], 0);
        const json& findings = report["findings"];
        ASSERT_EQ(findings.size(), expected["findings"].size()) << findings;
        for (std::size_t i = 0; i < findings.size(); ++i) {
            json found = findings[i];
            found["line"] = found["location"]["line"];
            for (json& value : found["values"]) {
                value["line"] = value["location"]["line"];
                value.erase("location");
                value.erase("path");
            }
            json filled = found;
            filled.update(expected["findings"][i]);
            EXPECT_EQ(found, filled);
            EXPECT_TRUE(is_explained(filled)) << filled;
        }
    }
}
