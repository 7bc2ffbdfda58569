/// A commit is killed, and fails, at each system call that touches the running configuration or its
/// report: the old configuration or the new one is in place, whole, and the command says which.
#include <sys/ptrace.h>
#include <sys/stat.h>
#include <sys/syscall.h>
#include <sys/uio.h>
#include <sys/user.h>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <csignal>
#include <iostream>
#include <set>

#include "command.h"

namespace fs = std::filesystem;

namespace {

constexpr int kLetThrough = 0;
constexpr int kKill = -1;
const gid_t kGroup = geteuid() == 0 ? 1 : getegid();  // another one where that is allowed

/// What becomes of a system call: kLetThrough, kKill, or the error it fails with, not being made.
using Decide = std::function<int(long number)>;

/// No file is behind their arguments, whatever these look like.
const std::set<long> kUnrelated = {SYS_rt_sigaction, SYS_rt_sigprocmask, SYS_clock_gettime,
                                   SYS_exit_group,   SYS_mmap,           SYS_munmap,
                                   SYS_mprotect,     SYS_madvise};
/// Nothing hangs on their success.
const std::set<long> kHarmless = {SYS_close, SYS_ioctl, SYS_unlinkat};

const std::string kOld = "{}" + std::string(70000, ' ');
const std::string kNew = "{}" + std::string(80000, '\n');

std::string text_at(pid_t process, unsigned long long address) {
    std::string bytes(256, '\0');
    const iovec local{bytes.data(), bytes.size()};
    const iovec remote{reinterpret_cast<void*>(address), bytes.size()};
    process_vm_readv(process, &local, 1, &remote, 1, 0);
    return bytes.c_str();
}

/// A call names what it touches by a descriptor, by a path, or by a descriptor and then a path.
bool touches(pid_t process, const user_regs_struct& call, const std::string& folder) {
    const std::string descriptor = std::to_string(process) + "/fd/" + std::to_string(call.rdi);
    std::error_code none;
    return kUnrelated.count(static_cast<long>(call.orig_rax)) == 0 &&
           (holds(fs::read_symlink("/proc/" + descriptor, none), folder) ||
            text_at(process, call.rdi).find(folder) == 0 ||
            text_at(process, call.rsi).find(folder) == 0);
}

/// A tracer that asks `decide` before every system call that touches `folder`.
Surroundings watching(const std::string& folder, const Decide& decide) {
    Surroundings surroundings;
    surroundings.tracer = [=](pid_t process) {
        ptrace(PTRACE_SETOPTIONS, process, nullptr, PTRACE_O_TRACESYSGOOD | PTRACE_O_EXITKILL);
        user_regs_struct call{};
        bool is_entry = false;
        int decision = kLetThrough;
        int status = 0;
        for (;;) {
            ptrace(PTRACE_SYSCALL, process, nullptr, nullptr);
            if (waitpid(process, &status, 0) != process || !WIFSTOPPED(status)) {
                return status;
            }
            if (WSTOPSIG(status) != (SIGTRAP | 0x80)) {
                continue;
            }
            is_entry = !is_entry;
            ptrace(PTRACE_GETREGS, process, nullptr, &call);
            if (is_entry) {
                decision = touches(process, call, folder) ? decide(static_cast<long>(call.orig_rax))
                                                          : kLetThrough;
            }
            if (decision == kKill) {
                kill(process, SIGKILL);
            } else if (decision != kLetThrough) {
                (is_entry ? call.orig_rax : call.rax) = is_entry ? -1ULL : -1ULL * decision;
                ptrace(PTRACE_SETREGS, process, nullptr, &call);
            }
        }
    };
    return surroundings;
}

/// Commits through a symbolic link with `fault` at call number `at`; false when there are fewer
/// calls. A commit that replaces finds what one that was killed has left.
bool survives(bool is_first, std::size_t at, int fault) {
    const Folder folder;
    const Folder elsewhere;
    const std::string running = folder / "running";
    if (!is_first) {
        EXPECT_EQ(chmod(folder.put("running", kOld).c_str(), 0604), 0);
        EXPECT_EQ(chown(running.c_str(), geteuid(), kGroup), 0);
        folder.put(".running.vrrp-valid-new", "half a conf");
    }
    fs::create_symlink(running, elsewhere / "link");
    const std::string before = content_of(running);
    const Arguments commit = {"commit", "--running", elsewhere / "link",
                              elsewhere.put("candidate", kNew)};
    std::vector<long> calls;
    long faulty = -1;
    const Decide decide = [&](long number) {
        calls.push_back(number);
        faulty = calls.size() == at ? number : faulty;
        return calls.size() == at ? fault : kLetThrough;
    };
    Surroundings surroundings = watching(folder.path, decide);
    surroundings.output_file = folder.put("report", "");
    const Outcome outcome = run(commit, surroundings);
    if (faulty < 0) {
        const auto renamed = std::find(calls.begin(), calls.end(), SYS_renameat);
        EXPECT_EQ(std::count(calls.begin(), renamed, SYS_fsync), 1) << "the file, before";
        EXPECT_EQ(std::count(renamed, calls.end(), SYS_fsync), 1) << "the folder, after";
        return false;
    }
    SCOPED_TRACE("fault " + std::to_string(fault) + " at call " + std::to_string(at) +
                 ", which is system call " + std::to_string(faulty) + ": " + outcome.err);
    const bool is_new = content_of(running) == kNew;
    EXPECT_TRUE(is_new || (content_of(running) == before && fs::exists(running) != is_first));
    if (fault == kKill) {
        EXPECT_EQ(outcome.status, -SIGKILL);
    } else if (outcome.status == 0) {
        EXPECT_TRUE(is_new && kHarmless.count(faulty) == 1);
        EXPECT_TRUE(is_first || faulty != SYS_unlinkat) << "what was left stands in the way";
    } else {
        EXPECT_EQ(outcome.status, 2);
        EXPECT_EQ(outcome.err.find("vrrp-valid: " + (elsewhere / "link") + ": "), 0U);
        EXPECT_EQ(std::count(outcome.err.begin(), outcome.err.end(), '\n'), 1);
        EXPECT_EQ(holds(outcome.err, "it is as it was"), !is_new);
        EXPECT_EQ(holds(outcome.err, "the new configuration is in its place"), is_new);
        EXPECT_FALSE(is_first && fs::exists(folder / ".running.vrrp-valid-new"));
    }
    EXPECT_EQ(run(commit).status, 0);
    EXPECT_EQ(content_of(running), kNew);
    struct stat status {};
    EXPECT_EQ(stat(running.c_str(), &status), 0);
    EXPECT_EQ(status.st_mode & 07777U, is_first ? 0640U : 0604U);
    EXPECT_EQ(status.st_gid, is_first ? getegid() : kGroup);
    EXPECT_TRUE(fs::is_symlink(elsewhere / "link"));
    EXPECT_EQ(std::distance(fs::directory_iterator(folder.path), {}), 2) << "a stray file is left";
    return true;
}

}  // namespace

TEST(Commit, LeavesTheOldOrTheNewConfigurationWhole) {
    umask(027);
    int kills = 0;
    int failed_calls = 0;
    for (const bool is_first : {false, true}) {
        for (const int fault : {kKill, ENOSPC, EIO, EACCES}) {
            int at = 1;
            for (; survives(is_first, at, fault); ++at) {
                ++(fault == kKill ? kills : failed_calls);
            }
            EXPECT_GT(at, 12) << "too few system calls were seen";
        }
    }
    std::cout << "kills: " << kills << ", failed calls: " << failed_calls << "\n";
}

TEST(Commit, ConcurrentOnesEndOneAfterTheOther) {
    const Folder folder;
    const Folder elsewhere;
    const std::string example = VRRP_VALID_EXAMPLES "/messages/version-changed/";
    const std::string candidate = content_of(example + "candidate.json");
    const std::string later = candidate + "\n";
    const std::string running = folder.put("running", content_of(example + "running.json"));
    Terminal first({"commit", "--running", running, elsewhere.put("one", candidate)});
    first.answer("[y/N] ", "");
    // The second one comes as far as the lock, or past where it should be, before the first one
    // goes on. It has nothing to warn of only when it is checked against what the first one leaves.
    bool went_on = false;
    const Decide go_on_at_lock = [&](long number) {
        if ((number == SYS_flock || number == SYS_close) && !std::exchange(went_on, true)) {
            first.answer("", "y\n");
        }
        return kLetThrough;
    };
    const Arguments commit = {"commit", "--running", running, elsewhere.put("two", later)};
    const Outcome second = run(commit, watching(folder.path, go_on_at_lock));
    EXPECT_EQ(second.status, 0) << second.out;
    EXPECT_EQ(first.finish().status, 0);
    EXPECT_EQ(content_of(running), later);
}
