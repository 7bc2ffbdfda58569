/// Runs every case of cases.json in a folder of its own: "arguments"; "files" of the folder, where
/// "@file" stands for a file's content and "vlan10" for what the case gives for it; "input" and
/// "output", of the standard streams; variables of the "environment"; "answers", on a terminal:
/// what to wait for and what to type. It ends with "status", minus the signal that ended it,
/// "shows", in this order, and "hides" parts of what it says, or all that it "writes", and "leaves"
/// files. $DIR is the folder, $PLACES one with a model of the tests' own, $PLUGIN a plug-in that
/// goes wrong; what cannot be checked, status 2, is told on standard error, in lines that begin
/// with the command's name.
#include <fnmatch.h>
#include <sys/stat.h>

#include <algorithm>
#include <map>
#include <nlohmann/json.hpp>
#include <regex>
#include <sstream>

#include "command.h"

using nlohmann::json;
namespace fs = std::filesystem;

namespace {

std::string filled_in(std::string text, const Folder& folder) {
    text = replaced(replaced(text, "$DIR", folder.path), "$EXAMPLES", VRRP_VALID_EXAMPLES);
    text = replaced(replaced(text, "$PLACES", VRRP_VALID_PLACES), "$PLUGIN", VRRP_VALID_PLUGIN);
    text = replaced(replaced(text, "$LIB", VRRP_VALID_LIB_DIR), "$YANG", VRRP_VALID_YANG_DIR);
    return text;
}

Outcome run_case(const json& row, const Folder& folder) {
    Arguments arguments = row["arguments"];
    for (std::string& argument : arguments) {
        argument = filled_in(argument, folder);
    }
    const auto environment = row.value("environment", Variables());
    if (!row.contains("answers")) {
        return run(arguments,
                   {row.value("input", ""), row.value("output", ""), folder.path, environment});
    }
    Terminal terminal(arguments, environment);
    for (const json& answer : row["answers"]) {
        terminal.answer(answer[0], answer[1]);
    }
    return terminal.finish();
}

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

TEST(Command, DoesWhatEachCaseSays) {
    umask(077);  // a key file is its owner's
    for (const json& row : json::parse(content_of(VRRP_VALID_CASES))) {
        const Folder folder;
        const auto bytes = [&](const std::string& text) {
            return text[0] == '@' ? content_of(filled_in(text.substr(1), folder)) : text;
        };
        for (const auto& [name, content] : row.value("files", Variables())) {
            folder.put(name, replaced(bytes(content), "vlan10", row.value("vlan10", "vlan10")));
        }
        const Outcome outcome = run_case(row, folder);
        const std::string written = outcome.out + outcome.err;
        SCOPED_TRACE(row["case"].get<std::string>() + ": " + written);
        EXPECT_EQ(outcome.status, row["status"]);
        if (outcome.status == 2 && !row.contains("answers")) {
            std::istringstream lines(outcome.err);
            for (std::string line; std::getline(lines, line);) {
                EXPECT_EQ(line.find("vrrp-valid: "), 0U) << line;
            }
            EXPECT_NE(outcome.err, "");
        }
        EXPECT_EQ(written, row.value("writes", written));
        std::size_t at = 0;
        for (const std::string& part : row.value("shows", Arguments())) {
            EXPECT_NE(at = written.find(filled_in(part, folder), at), std::string::npos) << part;
        }
        for (const std::string& part : row.value("hides", Arguments())) {
            EXPECT_FALSE(holds(written, part)) << part;
        }
        for (const auto& [name, content] : row.value("leaves", Variables())) {
            EXPECT_EQ(content_of(folder / name), bytes(content));
        }
        EXPECT_TRUE(outcome.echoes);
    }
}

TEST(Command, PutsAWholeReportInTheOutputFilesPlace) {
    umask(027);
    const Folder folder;
    const std::string example = VRRP_VALID_EXAMPLES "/messages/conflict-free/candidate.json";
    const std::string old = folder.put("old", "");
    chmod(old.c_str(), 0604);
    fs::create_symlink(old, folder / "link");
    for (const auto& [name, mode] :
         std::map<std::string, unsigned>{{"new", 0640}, {"link", 0604}}) {
        EXPECT_EQ(run({"check", "--format", "json", "-o", folder / name, example}).status, 0);
        EXPECT_EQ(json::parse(content_of(folder / name))["reports"][0]["valid"], true);
        EXPECT_EQ(fs::status(folder / name).permissions(), fs::perms(mode));
    }
    EXPECT_TRUE(fs::is_symlink(folder / "link"));
    const std::string report = content_of(old);
    EXPECT_EQ(run({"diff", "--running", folder / "missing", "-o", old, example}).status, 2);
    EXPECT_EQ(content_of(old), report);
    EXPECT_EQ(std::distance(fs::directory_iterator(folder.path), {}), 3) << "a stray file is left";
}

TEST(Command, FindsAndExplainsWhatEachExampleSays) {
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
    EXPECT_GE(std::distance(fs::directory_iterator(VRRP_VALID_EXAMPLES "/messages"), {}), 22);
}
