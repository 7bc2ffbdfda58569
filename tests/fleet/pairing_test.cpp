// Which files are checked, and against which.
#include "fleet/pairing.h"

#include <gmock/gmock.h>

#include "folder.h"

namespace fs = std::filesystem;
using testing::ElementsAre;
using testing::HasSubstr;

namespace {

class PairingTest : public testing::Test {
  protected:
    void SetUp() override {
        fs::current_path(folder_.path);
        for (const char* const file :
             {"new/a.json", "new/b.xml", "new/c/d.json", "new/c/d.xml", "new/notes.txt",
              "other.xml", "now/a.json", "now/a.xml", "now/b.json", "now/c/d.json", "now/gone.json",
              "text/notes.txt"}) {
            folder_.put(file, "{}");
        }
    }
    void TearDown() override { fs::current_path("/"); }

    /// "candidate running" of each pair, "candidate !running" where that is the problem.
    static std::vector<std::string> pairs(const PairingOptions& options) {
        std::vector<std::string> lines;
        const Pairing pairing = pair_files(options);
        for (const Pair& pair : pairing.pairs) {
            const std::string& about = pair.running.empty() ? pair.candidate : pair.running;
            EXPECT_EQ(pair.problem.empty() ? 0 : pair.problem.find(about + ": "), 0U);
            lines.push_back(pair.candidate + (pair.problem.empty() ? " " : " !") + pair.running);
        }
        for (const auto& [name, count] :
             {std::pair("hidden", pairing.hidden), std::pair("running", pairing.running_alone)}) {
            if (count > 0) {
                lines.push_back(name + (" " + std::to_string(count)));
            }
        }
        return lines;
    }

    static std::string complaint(const PairingOptions& options) {
        return pair_files(options).pairs.back().problem;
    }

    Folder folder_;
};

TEST_F(PairingTest, FindsThePartnerByItsPathBelowTheFolder) {
    EXPECT_THAT(pairs({{"new"}, "now", "", false}),
                ElementsAre("new/a.json now/a.json", "new/b.xml now/b.json",
                            "new/c/d.json now/c/d.json", "new/c/d.xml now/c/d.json", "running 2"));
    EXPECT_THAT(pairs({{"new/c/d.xml", "new/c/"}, "now", "", false}),
                ElementsAre("new/c/d.xml now/c/d.json", "new/c/d.json !now/d.json",
                            "new/c/d.xml !now/d.xml", "running 4"));
    EXPECT_THAT(pairs({{"new/c", "-"}, "other.xml", "", false}),
                ElementsAre("new/c/d.json other.xml", "new/c/d.xml other.xml", "- other.xml"));
    EXPECT_THAT(pairs({{"new/a.json", "./new/a.json", "new/c/../a.json"}, "b", "", false}),
                ElementsAre("new/a.json b"));
}

TEST_F(PairingTest, TakesNoOtherDevicesConfiguration) {
    folder_.put("new/c/a.json", "{}");
    folder_.put("more/b.json", "{}");
    EXPECT_THAT(pairs({{"new/c/a.json", folder_ / "new/c/d.json", "other.xml"}, "now", "", true}),
                ElementsAre("new/c/a.json !now/a.json", folder_ / "new/c/d.json now/c/d.json",
                            "other.xml ", "running 3"));
    EXPECT_THAT(pairs({{"new/b.xml", "more/b.json"}, "now", "", false}),
                ElementsAre("new/b.xml !now/b.json", "more/b.json !now/b.json", "running 4"));
    EXPECT_THAT(pairs({{"new/b", "new/b.txt"}, "now", "", false}),
                ElementsAre("new/b !now/b", "new/b.txt !now/b.txt", "running 5"));
}

TEST_F(PairingTest, TakesAListBehindTheArguments) {
    folder_.put("list", "other.xml\tnow/gone.json\r\n\nnew/a.json\nother.xml\tmissing.json\n");
    EXPECT_THAT(pairs({{"new/b.xml"}, "now", "list", false}),
                ElementsAre("new/b.xml now/b.json", "other.xml now/gone.json",
                            "new/a.json now/a.json", "other.xml !missing.json", "running 2"));
}

TEST_F(PairingTest, SaysWhatIsWrongWithAFolderOrList) {
    folder_.put("list", "other.xml\n\tx\n");
    EXPECT_THAT(complaint({{}, "now", "list", false}), HasSubstr("list:2: "));
    EXPECT_THAT(complaint({{}, "now", "missing", false}), HasSubstr("missing: "));
    folder_.put("empty", "\r\n \n");
    EXPECT_EQ(complaint({{}, "now", "empty", false}), "empty: names no candidate");
    EXPECT_THAT(complaint({{}, "now", "text", false}), HasSubstr("text: "));
    for (const std::string& line : {std::string("a\tb\tc"), std::string("a\t"), {"a\0b", 3}}) {
        folder_.put("list", "\xef\xbb\xbf  \n" + line);
        EXPECT_THAT(complaint({{}, "now", "list", false}), HasSubstr("list:2: give a candidate"));
    }
}

TEST_F(PairingTest, LeavesNothingOutInSilence) {
    folder_.put("hidden/.a.json", "{}");
    folder_.put("hidden/.git/b.json", "{}");
    folder_.put("hidden/.notes", "");
    EXPECT_THAT(pairs({{"hidden"}, "", "", false}), ElementsAre("hidden !", "hidden 2"));
    fs::create_symlink("nothing", "text/lost.json");
    fs::create_directory_symlink("../new", "text/site");
    fs::create_symlink("unmounted", "text/site-b");
    EXPECT_THAT(pairs({{"text"}, "", "", false}),
                ElementsAre("text/lost.json ", "text/site !", "text/site-b !"));
    fs::create_directories("empty/below");
    EXPECT_THAT(pairs({{"empty", "other.xml"}, "", "", false}),
                ElementsAre("empty !", "other.xml "));
    fs::create_symlink("nothing", "now/loop.json");
    folder_.put("new/loop.json", "{}");
    EXPECT_THAT(pairs({{"new/loop.json"}, "now", "", true}),
                ElementsAre("new/loop.json now/loop.json", "running 5"))
        << "what cannot be reached is not missing";
}

}  // namespace
