/// Many candidates in one run: folders, lists, shards, and a run that is interrupted.
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <csignal>

#include "command.h"

namespace {

const std::string kDevices = "abcdefghijkl";
const std::string kExample = VRRP_VALID_EXAMPLES "/messages/lower-layer-changed/";

/// The running configurations and the candidates of a few devices, of which one candidate has an
/// error.
struct Fleet : Folder {
    Fleet() {
        for (const char device : kDevices) {
            put(file("running", device), content_of(kExample + "running.json"));
            put(file("candidate", device),
                content_of(kExample + (device == 'd' ? "candidate.json" : "running.json")));
        }
    }

    static std::string file(const std::string& kind, char device) {
        return kind + "/site/device-" + device + ".json";
    }

    Outcome check(const Arguments& options) const {
        Arguments arguments = {"check", "--running", *this / "running", *this / "candidate"};
        arguments.insert(arguments.end(), options.begin(), options.end());
        return run(arguments);
    }

    Arguments one_by_one() const {
        return {"check", "--jobs", "1", "--running", *this / "running", *this / "candidate"};
    }

    /// A candidate that comes when the test sends it.
    std::string fifo_for(char device) const {
        std::string fifo = *this / file("candidate", device);
        std::filesystem::remove(fifo);
        EXPECT_EQ(mkfifo(fifo.c_str(), 0600), 0);
        return fifo;
    }

    /// The JSON report, in a file, of these devices.
    std::string shard(const std::string& devices) const {
        std::string list;
        for (const char device : devices) {
            list += *this / file("candidate", device) + "\t" + (*this / file("running", device));
            list += "\n";
        }
        const std::string name = put("list-" + devices, list);
        return put("shard-" + devices, run({"check", "--format=json", "--files-from", name}).out);
    }
};

/// Waits for the command to open `fifo`, and `seconds` more before it gets a configuration.
void feed(const std::string& fifo, unsigned seconds) {
    const std::string clean = content_of(kExample + "running.json");
    const int end = open(fifo.c_str(), O_WRONLY);
    sleep(seconds);
    EXPECT_EQ(write(end, clean.data(), clean.size()), static_cast<ssize_t>(clean.size()));
    close(end);
}

}  // namespace

TEST(Fleet, IsReportedTheSameForAnyNumberOfJobs) {
    const Fleet fleet;
    for (const std::string format : {"text", "json"}) {
        const Outcome one = fleet.check({"--format", format, "--jobs", "1"});
        EXPECT_TRUE(ended(fleet.check({"--format", format, "--jobs", "5"}), 1, {one.out}));
    }
    const std::string text = fleet.check({}).out;
    EXPECT_TRUE(holds(text, "device-d.json: 1 error, 0 warnings")) << text;
    EXPECT_FALSE(holds(text, "device-c")) << "a clean candidate is only counted";
    fleet.put(Fleet::file("candidate", 'c'), "{}");
    EXPECT_TRUE(
        holds(fleet.check({}).out, ": warning: removes the only VRRP instance; is this an edit? "));
    EXPECT_TRUE(holds(text, "\n12 candidates: 1 error, 0 warnings in ")) << text;
}

TEST(Fleet, IsJoinedFromItsShards) {
    const Fleet fleet;
    const std::string whole = fleet.check({"--format", "json"}).out;
    const std::string first = fleet.shard(kDevices.substr(0, 5));
    const std::string second = fleet.shard(kDevices.substr(5));
    const Outcome joined = run({"report", "--format", "json", first, second});
    EXPECT_EQ(joined.status, 1) << joined.err;
    EXPECT_EQ(joined.out, whole);

    const Outcome twice = run({"report", "--format", "json", first, second, first});
    EXPECT_TRUE(ended(twice, 2, {first + ": reports "}));
    EXPECT_EQ(twice.out, "") << "half a report";
    const std::string cut = fleet.put("cut.json", whole.substr(0, whole.size() / 2));
    EXPECT_TRUE(
        ended(run({"report", cut}), 2, {"vrrp-valid: " + cut + ":", ": not a complete report"}));
}

TEST(Fleet, ShowsHowFarItIsOnATerminalOnly) {
    const Fleet fleet;
    const std::string fifth = fleet.fifo_for('e');
    const std::string ninth = fleet.fifo_for('i');
    const std::string err = fleet.put("err", "");
    for (const std::string where : {"terminal", "file", "file for both"}) {
        const bool is_shown = where != "file for both";
        Arguments arguments = fleet.one_by_one();
        if (where != "terminal") {
            arguments.insert(arguments.end(), {"-o", fleet / "report"});
        }
        Terminal terminal(arguments, [&] {
            if (!is_shown && freopen(err.c_str(), "w", stderr) == nullptr) {
                _exit(127);
            }
        });
        feed(fifth, 1);
        if (is_shown) {
            terminal.answer("\r\033[K5 of 12 candidates, 1 finding", "");
        }
        feed(ninth, 0);
        const Outcome outcome = terminal.finish();
        EXPECT_EQ(outcome.status, 1);
        EXPECT_EQ(holds(outcome.out, " finding\r\033[K"), is_shown);
        EXPECT_EQ(holds(outcome.out, "12 candidates: "), where == "terminal") << outcome.out;
        EXPECT_FALSE(holds(outcome.out, "\033[K\r\033[K")) << "it blinks: " << outcome.out;
        EXPECT_EQ(content_of(err), "");
    }
}

TEST(Fleet, EndsWithWhatIsDoneWhenInterrupted) {
    const Fleet fleet;
    const std::string fifth = fleet.fifo_for('e');
    const std::string file = fleet / "report";
    for (const int signal : {SIGHUP, SIGINT, SIGTERM}) {
        const bool has_file = signal == SIGTERM;
        Arguments arguments = fleet.one_by_one();
        if (has_file) {
            arguments.insert(arguments.end(), {"-o", file});
        }
        Terminal terminal(arguments);
        // Nobody may ever write what it waits for.
        const int end = signal == SIGHUP ? -1 : open(fifth.c_str(), O_WRONLY);
        terminal.answer(has_file ? "" : "error:", "");
        kill(terminal.process(), signal);
        const Outcome outcome = terminal.finish();
        EXPECT_TRUE(ended(outcome, -signal, {"interrupted: 8 candidates were not checked"}));
        EXPECT_TRUE(
            holds(has_file ? content_of(file) : outcome.out, "12 candidates: 1 error, 0 warnings"));
        close(end);
    }
}

TEST(Fleet, IsJoinedByCandidateAndRunningConfiguration) {
    const Fleet fleet;
    const std::string candidate = fleet / Fleet::file("candidate", 'd');
    Arguments join = {"report"};
    for (const char running : {'a', 'b'}) {
        join.push_back(fleet.put(std::string("report-") + running,
                                 run({"check", "--format", "json", "--running",
                                      fleet / Fleet::file("running", running), candidate})
                                     .out));
    }
    EXPECT_TRUE(ended(run(join), 1, {"2 candidates: 2 errors, 0 warnings"}));
}
