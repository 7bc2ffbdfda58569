/// Runs every case of the .json files beside this one. In a folder of its own, once the "files" are
/// written (text, its lines, or an object as JSON), bash runs what "run" says. That exits with
/// "exit", 0 unless given, says all of "says", in this order, and nothing of "never", or "prints"
/// just that. It changes nothing in the folder, but for what it "leaves". With "types" it is on a
/// terminal: what to wait for there, and what to type. The folder always has a key file and links
/// to the examples, their messages, the installed libraries and models, a model of the tests' own,
/// and a plug-in that goes wrong.
#include <sys/stat.h>

#include <map>
#include <nlohmann/json.hpp>
#include <regex>

#include "command.h"

using nlohmann::json;
namespace fs = std::filesystem;

namespace {

const Variables kLinks = {{"examples", VRRP_VALID_EXAMPLES},
                          {"lib", VRRP_VALID_LIB_DIR},
                          {"yang", VRRP_VALID_YANG_DIR},
                          {"places", VRRP_VALID_PLACES},
                          {"plugin.so", VRRP_VALID_PLUGIN},
                          {"m", VRRP_VALID_EXAMPLES "/messages"},
                          {"validation-point.yang", VRRP_VALID_YANG_DIR "/validation-point.yang"}};

/// Of every file, whose name comes before those of its cases.
std::vector<json> all_cases() {
    std::vector<json> cases;
    for (const auto& file : fs::directory_iterator(VRRP_VALID_CASES)) {
        const std::string command = file.path().stem();
        for (json row :
             json::parse(file.path().extension() == ".json" ? content_of(file.path()) : "[]")) {
            row["name"] = command + "_" + row["name"].get<std::string>();
            cases.push_back(std::move(row));
        }
    }
    return cases;
}

std::string text_of(const json& content) {
    if (!content.is_array()) {
        return content.is_string() ? content.get<std::string>() : content.dump(1);
    }
    std::string lines;
    for (const std::string line : content) {
        lines += line + "\n";
    }
    return lines;
}

Variables files_in(const Folder& folder) {
    Variables files;
    for (const auto& entry : fs::recursive_directory_iterator(folder.path)) {
        files[entry.path()] = entry.is_symlink()     ? fs::read_symlink(entry).string()
                              : entry.is_directory() ? ""
                                                     : content_of(entry.path());
    }
    return files;
}

Outcome run_in(const Folder& folder, const json& row) {
    const std::string path = fs::path(VRRP_VALID_COMMAND).parent_path().string() + ":";
    const Variables environment = {{"PATH", path + getenv("PATH")}};
    const Arguments arguments = {"-c", text_of(row["run"])};
    if (!row.contains("types")) {
        Surroundings surroundings;
        surroundings.folder = folder.path;
        surroundings.environment = environment;
        surroundings.program = "bash";
        return run(arguments, surroundings);
    }
    Terminal terminal(
        arguments, [&] { EXPECT_EQ(chdir(folder.path.c_str()), 0); }, environment, "bash");
    for (const json& answer : row["types"]) {
        terminal.answer(answer[0], answer[1]);
    }
    return terminal.finish();
}

class Command : public testing::TestWithParam<json> {};

}  // namespace

TEST_P(Command, DoesWhatTheCaseSays) {
    const json& row = GetParam();
    umask(077);  // a key file is its owner's
    const Folder folder;
    folder.put("key", "vrrp-valid-key " + std::string(64, '5') + "\n");
    for (const auto& [name, target] : kLinks) {
        fs::create_symlink(target, folder / name);
    }
    const json files = row.value("files", json::object());
    for (const auto& [name, content] : files.items()) {
        folder.put(name, text_of(content));
    }
    Variables before = files_in(folder);
    const Outcome outcome = run_in(folder, row);
    Variables after = files_in(folder);
    const std::string written = outcome.out + outcome.err;
    SCOPED_TRACE(written);
    EXPECT_EQ(outcome.status, row.value("exit", 0));
    if (outcome.status == 2 && !row.contains("types")) {
        EXPECT_TRUE(std::regex_match(outcome.err, std::regex("(vrrp-valid: [^\n]*\n)+")));
    }
    if (row.contains("prints")) {
        EXPECT_EQ(written, text_of(row["prints"]));
    }
    std::size_t at = 0;
    for (const std::string& part : row.value("says", Arguments())) {
        EXPECT_NE(at = written.find(part, at), std::string::npos) << part;
    }
    for (const std::string& part : row.value("never", Arguments())) {
        EXPECT_FALSE(holds(written, part)) << part;
    }
    for (const auto& [name, content] : row.value("leaves", Variables())) {
        EXPECT_EQ(after[folder / name], content);
        after.erase(folder / name);
        before.erase(folder / name);
    }
    EXPECT_EQ(after, before);
    EXPECT_TRUE(outcome.echoes);
}

INSTANTIATE_TEST_SUITE_P(Cases, Command, testing::ValuesIn(all_cases()), [](const auto& info) {
    return info.param["name"].template get<std::string>();
});

TEST(Names, LeadToTheirOwnEntries) {
    const Folder folder;
    const std::string example =
        content_of(VRRP_VALID_EXAMPLES "/messages/version-changed/running.json");
    const std::vector<std::pair<std::string, std::string>> rows = {
        {"%s%n%9999d", ""},       {"grün☃😀", ""},
        {R"(a\\\\b)", ""},        {std::string(300, 'k'), ""},
        {"a b", "a b"},           {R"(a\"b)", "a\"b"},
        {"a{b", "a{b"},           {"a}b", "a}b"},
        {R"(a\nb)", R"(a\x0ab)"},
    };
    for (const auto& [written, shown] : rows) {
        const Outcome outcome =
            run({"check", folder.put("file", replaced(example, "vlan10", written))});
        const bool is_found = shown.empty();
        EXPECT_TRUE(ended(outcome, is_found ? 0 : 1, {is_found ? ": 0 errors" : "l3-" + shown}));
    }
}

TEST(Output, IsAWholeReportInItsFilesPlace) {
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
