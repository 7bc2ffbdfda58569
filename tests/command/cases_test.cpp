/// Runs every case of the .json files beside this one. In a folder of its own, once the "files" are
/// written (text, its lines, or an object as JSON), bash runs what "run" says. That exits with
/// "exit", 0 unless given, says all of "says", in this order, and nothing of "never", or "prints"
/// just that. It changes nothing in the folder, but for what is in "out".
/// With "types" it is on a terminal: what to wait for there, and what to type. The folder always
/// has a key file and links to the examples, their messages, the installed libraries and models, a
/// model of the tests' own, and a plug-in that goes wrong.
#include <sys/stat.h>

#include <map>
#include <nlohmann/json.hpp>
#include <regex>

#include "command.h"

using nlohmann::json;
namespace fs = std::filesystem;

namespace {

using Variables = std::map<std::string, std::string>;

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
    for (auto entry = fs::recursive_directory_iterator(folder.path); entry != fs::end(entry);
         ++entry) {
        const bool is_file = entry->is_regular_file() && !entry->is_symlink();
        files[entry->path()] = is_file ? content_of(entry->path()) : "";
        if (entry->path() == folder / "out") {
            entry.disable_recursion_pending();
        }
    }
    return files;
}

Outcome run_in(const Folder& folder, const json& row) {
    const Arguments arguments = {"-c", text_of(row["run"])};
    const auto enter = [&] {
        const std::string programs = fs::path(VRRP_VALID_COMMAND).parent_path();
        setenv("PATH", (programs + ":" + getenv("PATH")).c_str(), 1);
        EXPECT_EQ(chdir(folder.path.c_str()), 0);
    };
    return row.contains("types") ? run_on_terminal(arguments, enter, row["types"])
                                 : run(arguments, enter, wait_for, "bash");
}

class Command : public testing::TestWithParam<json> {};

}  // namespace

TEST_P(Command, DoesWhatTheCaseSays) {
    const json& row = GetParam();
    umask(077);  // a key file is its owner's
    const Folder folder;
    folder.put("key", "vrrp-valid-key " + std::string(64, '5') + "\n");
    fs::create_directory(folder / "out");
    for (const auto& [name, target] : kLinks) {
        fs::create_symlink(target, folder / name);
    }
    const json files = row.value("files", json::object());
    for (const auto& [name, content] : files.items()) {
        folder.put(name, text_of(content));
    }
    const Variables before = files_in(folder);
    const Outcome outcome = run_in(folder, row);
    EXPECT_EQ(files_in(folder), before);
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
        at += part.size();
    }
    for (const std::string& part : row.value("never", Arguments())) {
        EXPECT_FALSE(holds(written, part)) << part;
    }
    EXPECT_TRUE(outcome.echoes);
}

INSTANTIATE_TEST_SUITE_P(Cases, Command, testing::ValuesIn(all_cases()), [](const auto& info) {
    return info.param["name"].template get<std::string>();
});
