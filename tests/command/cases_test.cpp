/// Runs every case of cases.json in a folder of its own: "arguments"; "files" of the folder, where
/// "@file" stands for a file's content and "vlan10" for what the case gives for it; "input" and
/// "output", of the standard streams; "answers", on a terminal: what to wait for, and what to type.
/// It ends with "status", minus the signal that ended it; "shows" and "hides" parts of what it
/// says, and "leaves" files. $DIR stands for the folder, $EXAMPLES, $LIB and $YANG for the project's.
/// What cannot be judged, status 2, is told in one line on standard error and nothing else.
#include <gtest/gtest.h>
#include <sys/stat.h>

#include <map>
#include <nlohmann/json.hpp>

#include "command.h"

using nlohmann::json;
using Texts = std::map<std::string, std::string>;

namespace {

std::string filled_in(std::string text, const Folder& folder) {
    text = replaced(replaced(text, "$DIR", folder.path), "$EXAMPLES", VRRP_VALID_EXAMPLES);
    text = replaced(replaced(text, "$LIB", VRRP_VALID_LIB_DIR), "$YANG", VRRP_VALID_YANG_DIR);
    return text;
}

Outcome run_case(const json& row, const Folder& folder) {
    Arguments arguments = row["arguments"];
    for (std::string& argument : arguments) {
        argument = filled_in(argument, folder);
    }
    if (!row.contains("answers")) {
        return run(arguments, {row.value("input", ""), row.value("output", ""), folder.path});
    }
    Terminal terminal(arguments, row.value("no_colour", ""));
    for (const json& answer : row["answers"]) {
        terminal.expect(answer[0]);
        terminal.type(answer[1]);
    }
    return terminal.finish();
}

void expect_one_complaint(const Outcome& outcome) {
    EXPECT_EQ(outcome.out, "");
    EXPECT_EQ(outcome.err.find("vrrp-valid: "), 0U);
    EXPECT_EQ(outcome.err.find('\n'), outcome.err.size() - 1);
}

}  // namespace

TEST(Command, DoesWhatEachCaseSays) {
    umask(077);  // a key file is its owner's
    for (const json& row : json::parse(content_of(VRRP_VALID_CASES))) {
        const Folder folder;
        const auto bytes = [&](const std::string& text) {
            return text[0] == '@' ? content_of(filled_in(text.substr(1), folder)) : text;
        };
        for (const auto& [name, content] : row.value("files", Texts())) {
            folder.put(name, replaced(bytes(content), "vlan10", row.value("vlan10", "vlan10")));
        }
        const Outcome outcome = run_case(row, folder);
        const std::string written = outcome.out + outcome.err;
        SCOPED_TRACE(row["case"].get<std::string>() + ": " + written);
        EXPECT_EQ(outcome.status, row["status"]);
        if (outcome.status == 2 && !row.contains("answers")) {
            expect_one_complaint(outcome);
        }
        std::size_t at = 0;
        for (const std::string& part : row.value("shows", Arguments())) {
            EXPECT_NE(at = written.find(filled_in(part, folder), at), std::string::npos) << part;
        }
        for (const std::string& part : row.value("hides", Arguments())) {
            EXPECT_FALSE(holds(written, part)) << part;
        }
        for (const auto& [name, content] : row.value("leaves", Texts())) {
            EXPECT_EQ(content_of(folder / name), bytes(content));
        }
        EXPECT_TRUE(outcome.echoes);
    }
}
