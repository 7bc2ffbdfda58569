/// Many candidates in one run: folders, lists, shards, and a run that is interrupted.
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <csignal>
#include <nlohmann/json.hpp>

#include "command.h"

using nlohmann::json;
namespace fs = std::filesystem;

namespace {

constexpr int kDevices = 12;

/// A folder with the running configurations and the candidates of a few devices, of which one
/// candidate has an error.
class FleetTest : public testing::Test {
  protected:
    void SetUp() override {
        fs::create_directories(folder_ / "running/site");
        fs::create_directories(folder_ / "candidate/site");
        const std::string examples = VRRP_VALID_EXAMPLES "/messages/";
        for (int i = 0; i < kDevices; ++i) {
            const std::string device = "site/device-" + std::string(1, static_cast<char>('a' + i));
            const std::string running =
                folder_.put("running/" + device + ".json",
                            content_of(examples + "lower-layer-changed/running.json"));
            const std::string candidate = folder_.put(
                "candidate/" + device + ".json",
                content_of(i == 3 ? examples + "lower-layer-changed/candidate.json" : running));
            list_.push_back(candidate + "\t" + running + "\n");
        }
    }

    Arguments check(const Arguments& options) const {
        Arguments arguments = {"check", "--running", folder_ / "running", folder_ / "candidate"};
        arguments.insert(arguments.end(), options.begin(), options.end());
        return arguments;
    }

    /// The JSON report, in a file, of the devices from `begin` to `end`.
    std::string shard(int begin, int end) const {
        std::string list;
        for (int i = begin; i < end; ++i) {
            list += list_[static_cast<std::size_t>(i)];
        }
        const std::string name = "shard-" + std::to_string(begin);
        return folder_.put(
            name + ".json",
            run({"check", "--format", "json", "--files-from", folder_.put(name, list)}).out);
    }

    Folder folder_;
    std::vector<std::string> list_;
};

TEST_F(FleetTest, IsReportedTheSameForAnyNumberOfJobs) {
    for (const std::string format : {"text", "json"}) {
        const Outcome one = run(check({"--format", format, "--jobs", "1"}));
        EXPECT_EQ(one.status, 1) << one.err;
        EXPECT_EQ(run(check({"--format", format, "--jobs", "5"})).out, one.out);
    }
    const std::string text = run(check({})).out;
    EXPECT_TRUE(holds(text, "device-d.json: 1 error, 0 warnings")) << text;
    EXPECT_FALSE(holds(text, "device-c")) << "a clean candidate is only counted";
    EXPECT_TRUE(holds(text, "\n12 candidates: 1 error, 0 warnings in ")) << text;
}

TEST_F(FleetTest, SaysOfWhichCandidateThereIsNoRunningConfiguration) {
    fs::remove(folder_ / "running/site/device-a.json");
    const Outcome refused = run(check({"--accept-warnings", "--quiet"}));
    EXPECT_EQ(refused.status, 2);
    EXPECT_TRUE(holds(refused.err, "running/site/device-a.json: there is no such running"))
        << refused.err;
    EXPECT_TRUE(holds(refused.err, "1 of 12 candidates could not be checked")) << refused.err;
    EXPECT_EQ(run(check({"--allow-missing-running"})).status, 1);
}

TEST_F(FleetTest, IsJoinedFromItsShards) {
    const std::string whole = run(check({"--format", "json"})).out;
    const Arguments report = {"report", "--format", "json", shard(0, 5), shard(5, kDevices)};
    const Outcome joined = run(report);
    EXPECT_EQ(joined.status, 1) << joined.err;
    EXPECT_EQ(joined.out, whole);
    const Outcome tests = run({"report", "--format", "junit", report[3], report[4]});
    EXPECT_TRUE(holds(tests.out, "lower-layer cannot be changed")) << tests.out;

    const Outcome doubled = run({"report", report[3], report[4], report[3]});
    EXPECT_EQ(doubled.status, 2);
    EXPECT_TRUE(holds(doubled.err, report[3] + ": reports ")) << doubled.err;
    const std::string cut = folder_.put("cut.json", whole.substr(0, whole.size() / 2));
    const Outcome broken = run({"report", cut});
    EXPECT_EQ(broken.status, 2);
    EXPECT_EQ(broken.err.find("vrrp-valid: " + cut + ": not a complete report"), 0U) << broken.err;
}

/// Waits for the command to open `fifo`, and `seconds` more before it gets an empty configuration.
void feed(const std::string& fifo, unsigned seconds) {
    const int end = open(fifo.c_str(), O_WRONLY);
    sleep(seconds);
    EXPECT_EQ(write(end, "{}", 2), 2);
    close(end);
}

TEST_F(FleetTest, ShowsHowFarItIsOnATerminalOnly) {
    const std::string fifth = folder_ / "candidate/site/device-e.json";
    const std::string ninth = folder_ / "candidate/site/device-i.json";
    for (const std::string& fifo : {fifth, ninth}) {
        fs::remove(fifo);
        ASSERT_EQ(mkfifo(fifo.c_str(), 0600), 0);
    }
    for (const bool is_terminal : {true, false}) {
        const std::string err = folder_.put("err", "");
        Terminal terminal(check({"--jobs", "1"}), {}, [&] {
            if (!is_terminal && freopen(err.c_str(), "w", stderr) == nullptr) {
                _exit(127);
            }
        });
        feed(fifth, 1);
        if (is_terminal) {
            terminal.answer("\r\033[K5 of 12 candidates, 1 finding, ", "");
            terminal.answer(" s left", "");
        }
        feed(ninth, 0);
        const Outcome outcome = terminal.finish();
        EXPECT_EQ(outcome.status, 1);
        EXPECT_EQ(holds(outcome.out, " s left\r\033[K12 candidates: "), is_terminal);
        EXPECT_EQ(holds(outcome.out, "12 candidates, "), is_terminal) << outcome.out;
        EXPECT_EQ(content_of(err), "");
    }
}

TEST_F(FleetTest, EndsWithWhatIsDoneWhenInterrupted) {
    // The fifth candidate comes when the test sends it, behind the Ctrl-C.
    const std::string fifth = folder_ / "candidate/site/device-e.json";
    fs::remove(fifth);
    ASSERT_EQ(mkfifo(fifth.c_str(), 0600), 0);
    Terminal terminal(check({"--jobs", "1"}));
    const int end = open(fifth.c_str(), O_WRONLY);
    terminal.answer("error:", "\003");
    terminal.answer("^C", "");
    EXPECT_EQ(write(end, "{}", 2), 2);
    close(end);
    const Outcome outcome = terminal.finish();
    EXPECT_EQ(outcome.status, -SIGINT);
    EXPECT_TRUE(holds(outcome.out, "12 candidates: 1 error, 0 warnings")) << outcome.out;
    EXPECT_TRUE(holds(outcome.out, "interrupted: 7 of 12 candidates were not checked"))
        << outcome.out;
}

}  // namespace
