/// A commit is killed, and fails, at each system call that touches the running configuration or its
/// report; it meets other commits, changes by others, and files that are none: the old
/// configuration or the new one is in place, whole, with the access it had, and the command says
/// which.
#include <fcntl.h>
#include <linux/posix_acl.h>
#include <linux/posix_acl_xattr.h>
#include <sys/ptrace.h>
#include <sys/resource.h>
#include <sys/stat.h>
#include <sys/syscall.h>
#include <sys/uio.h>
#include <sys/user.h>
#include <sys/wait.h>
#include <sys/xattr.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <csignal>
#include <cstring>
#include <map>
#include <optional>
#include <set>

#include "command.h"

namespace fs = std::filesystem;

namespace {

/// What becomes of a system call: one of these, or the error it fails with, not being made.
constexpr int kLetThrough = 0;
constexpr int kKill = -1;
constexpr int kTerminate = -2;  ///< SIGTERM arrives with it
constexpr int kHalve = -3;      ///< it transfers half the bytes at most
using Decide = std::function<int(long number)>;

const gid_t kGroup = geteuid() == 0 ? 1 : getegid();  // another one where that is allowed

/// No file is behind their arguments, whatever these look like.
const std::set<long> kUnrelated = {SYS_rt_sigaction, SYS_rt_sigprocmask, SYS_clock_gettime,
                                   SYS_exit_group,   SYS_mmap,           SYS_munmap,
                                   SYS_mprotect,     SYS_madvise};
/// Nothing hangs on their success.
const std::set<long> kHarmless = {SYS_close, SYS_ioctl, SYS_unlinkat};

/// As a commit writes them, in more than one piece.
const std::string kNew = content_of(VRRP_VALID_EXAMPLES "/whole-device.json");
const std::string kOld = replaced(kNew, "noc@example.net", "second-level@example.net");

const std::string kWarned = VRRP_VALID_EXAMPLES "/messages/version-changed/candidate.json";
const std::string kWarnedBefore = VRRP_VALID_EXAMPLES "/messages/version-changed/running.json";

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

/// Commits kNew over `running`; `decide` is asked before every system call that touches `folder`.
/// The command is watched from where it reads its candidate.
Outcome commit_watched(const std::string& running, const std::string& folder, const Decide& decide,
                       const Arguments& options = {}) {
    const Folder elsewhere;
    const std::string candidate = elsewhere / "candidate";
    EXPECT_EQ(mkfifo(candidate.c_str(), 0600), 0);
    Surroundings surroundings;
    surroundings.output_file = folder + "/report";
    surroundings.tracer = [&](pid_t process) {
        int status = 0;
        const int writer = open(candidate.c_str(), O_WRONLY);
        EXPECT_EQ(ptrace(PTRACE_SEIZE, process, nullptr, PTRACE_O_TRACESYSGOOD | PTRACE_O_EXITKILL),
                  0);
        ptrace(PTRACE_INTERRUPT, process, nullptr, nullptr);
        waitpid(process, &status, 0);
        EXPECT_EQ(write(writer, kNew.data(), kNew.size()), static_cast<ssize_t>(kNew.size()));
        close(writer);
        user_regs_struct call{};
        __ptrace_syscall_info info{};
        int decision = kLetThrough;
        int signal = 0;
        for (;;) {
            ptrace(PTRACE_SYSCALL, process, nullptr, signal);
            if (waitpid(process, &status, 0) != process || !WIFSTOPPED(status)) {
                return status;
            }
            const bool is_call = WSTOPSIG(status) == (SIGTRAP | 0x80);
            signal = is_call || status >> 16 != 0 ? 0 : WSTOPSIG(status);
            if (!is_call) {
                continue;
            }
            ptrace(PTRACE_GET_SYSCALL_INFO, process, sizeof info, &info);
            ptrace(PTRACE_GETREGS, process, nullptr, &call);
            const bool is_entry = info.op == PTRACE_SYSCALL_INFO_ENTRY;
            if (is_entry) {
                decision = touches(process, call, folder) ? decide(static_cast<long>(call.orig_rax))
                                                          : kLetThrough;
            }
            if (decision == kKill || (is_entry && decision == kTerminate)) {
                kill(process, decision == kKill ? SIGKILL : SIGTERM);
            } else if (is_entry && decision == kHalve) {
                call.rdx = (call.rdx + 1) / 2;
                ptrace(PTRACE_SETREGS, process, nullptr, &call);
            } else if (decision > kLetThrough) {
                (is_entry ? call.orig_rax : call.rax) = is_entry ? -1ULL : -1ULL * decision;
                ptrace(PTRACE_SETREGS, process, nullptr, &call);
            }
        }
    };
    Arguments arguments = {"commit", "--yes", "--running", running, candidate};
    arguments.insert(arguments.end(), options.begin(), options.end());
    return run(arguments, surroundings);
}

using Attributes = std::map<std::string, std::string>;

void set_attribute(const std::string& file, const std::string& name, const std::string& value) {
    EXPECT_EQ(setxattr(file.c_str(), name.c_str(), value.data(), value.size(), 0), 0) << name;
}

Attributes attributes_of(const std::string& file) {
    std::string names(1024, '\0');
    const ssize_t size = listxattr(file.c_str(), names.data(), names.size());
    Attributes attributes;
    for (ssize_t at = 0; at < size; at += static_cast<ssize_t>(strlen(&names[at])) + 1) {
        std::string value(1024, '\0');
        value.resize(getxattr(file.c_str(), &names[at], value.data(), value.size()));
        attributes[&names[at]] = value;
    }
    return attributes;
}

/// An access control list that lets the user 4711 do `permissions` beside the owner's 06, the
/// group's 0 and others' `others`.
std::string access_list(__u16 permissions, __u16 others) {
    const auto word = [](auto value) {
        return std::string(reinterpret_cast<const char*>(&value), sizeof value);
    };
    const auto entry = [&](int tag, __u16 mode, __u32 id) {
        return word(static_cast<__u16>(tag)) + word(mode) + word(id);
    };
    return word(static_cast<__u32>(POSIX_ACL_XATTR_VERSION)) + entry(ACL_USER_OBJ, 6, -1U) +
           entry(ACL_USER, permissions, 4711) + entry(ACL_GROUP_OBJ, 0, -1U) +
           entry(ACL_MASK, permissions, -1U) + entry(ACL_OTHER, others, -1U);
}

/// A running configuration whose access is to stay, through a symbolic link. In the way of that are
/// a default list of its folder, an open umask, and what a commit that was killed has left.
struct Router {
    explicit Router(const std::optional<std::string>& configuration, bool has_list = true) {
        umask(0);
        fs::create_symlink(running, link);
        if (configuration) {
            folder.put("running", *configuration);
            set_attribute(running, "user.origin", "site 7");
            mode = has_list ? 0644 : 0604;
            EXPECT_EQ(chmod(running.c_str(), mode), 0);
            if (has_list) {
                set_attribute(running, "system.posix_acl_access", access_list(4, 4));
            }
            EXPECT_EQ(chown(running.c_str(), geteuid(), kGroup), 0);
            attributes = attributes_of(running);
            EXPECT_EQ(attributes.size(), has_list ? 2U : 1U);
            fs::permissions(folder.put(".running.vrrp-valid-new", "half a conf"), fs::perms(0600));
        }
        set_attribute(folder.path, "system.posix_acl_default", access_list(7, 7));
    }

    /// Of a first configuration the folder decides, in the bounds of what is always kept to few.
    void expect_access() const {
        struct stat status {};
        EXPECT_EQ(stat(running.c_str(), &status), 0);
        EXPECT_EQ(status.st_mode & 07777U, mode);
        EXPECT_EQ(status.st_gid, attributes.empty() ? getegid() : kGroup);
        if (!attributes.empty()) {
            EXPECT_EQ(attributes_of(running), attributes);
        }
        EXPECT_TRUE(fs::is_symlink(link));
    }

    Folder folder;
    Folder elsewhere;
    std::string running = folder / "running";
    std::string link = elsewhere / "link";
    Attributes attributes;
    mode_t mode = 0640;
};

/// Commits with `fault` at call number `at`; false when there are fewer calls. A commit that
/// replaces finds what one that was killed has left.
bool survives(bool is_first, std::size_t at, int fault) {
    const Router router(is_first ? std::nullopt : std::optional(kOld));
    const std::string before = content_of(router.running);
    std::vector<long> calls;
    long faulty = -1;
    const Outcome outcome = commit_watched(router.link, router.folder.path, [&](long number) {
        calls.push_back(number);
        faulty = calls.size() == at ? number : faulty;
        return calls.size() == at ? fault : kLetThrough;
    });
    if (faulty < 0) {
        const auto renamed = std::find(calls.begin(), calls.end(), SYS_renameat);
        EXPECT_EQ(std::count(calls.begin(), renamed, SYS_fsync), 1) << "the file, before";
        EXPECT_EQ(std::count(renamed, calls.end(), SYS_fsync), 1) << "the folder, after";
        return false;
    }
    SCOPED_TRACE("fault " + std::to_string(fault) + " at call " + std::to_string(at) +
                 ", which is system call " + std::to_string(faulty) + ": " + outcome.err);
    const bool is_new = content_of(router.running) == kNew;
    EXPECT_TRUE(is_new ||
                (content_of(router.running) == before && fs::exists(router.running) != is_first));
    if (fault == kKill) {
        EXPECT_EQ(outcome.status, -SIGKILL);
        struct stat left {};
        stat((router.folder / ".running.vrrp-valid-new").c_str(), &left);
        EXPECT_EQ(left.st_mode & 0133U, 0U) << "more may get at what is left than at the old one";
        EXPECT_EQ(
            run({"commit", "--yes", "--running", router.link, router.elsewhere.put("new", kNew)})
                .err,
            "");
        EXPECT_EQ(content_of(router.running), kNew);
        EXPECT_EQ(std::distance(fs::directory_iterator(router.folder.path), {}), 2)
            << "the configuration and the report";
    } else if (outcome.status == 0) {
        EXPECT_TRUE(is_new && kHarmless.count(faulty) == 1);
        EXPECT_TRUE(is_first || faulty != SYS_unlinkat || at > calls.size() / 2)
            << "what was left stands in the way";
    } else {
        EXPECT_EQ(outcome.status, 2);
        EXPECT_EQ(outcome.err.find("vrrp-valid: " + router.link + ": "), 0U);
        EXPECT_EQ(std::count(outcome.err.begin(), outcome.err.end(), '\n'), 1);
        EXPECT_EQ(holds(outcome.err, "nothing was changed"), !is_new);
        EXPECT_EQ(holds(outcome.err, "the new configuration is in its place"), is_new);
        EXPECT_FALSE(is_first && fs::exists(router.folder / ".running.vrrp-valid-new"));
    }
    if (fs::exists(router.running)) {
        router.expect_access();
    }
    return true;
}

/// Makes the lock file `name` and holds it until the descriptor is closed.
int make_locked(const std::string& name) {
    const int file = open(name.c_str(), O_RDWR | O_CREAT, 0600);
    struct flock range {};
    range.l_type = F_WRLCK;
    EXPECT_EQ(fcntl(file, F_SETLK, &range), 0);
    return file;
}

/// Waits for the question, does `meanwhile`, and says yes.
Outcome confirm_after(const Arguments& arguments, const std::function<void()>& meanwhile) {
    Terminal terminal(arguments);
    terminal.answer("[y/N] ", "");
    meanwhile();
    terminal.answer("", "y\n");
    return terminal.finish();
}

}  // namespace

TEST(Commit, LeavesTheOldOrTheNewConfigurationWhole) {
    constexpr std::array<int, 3> kErrors = {ENOSPC, EIO, EACCES};
    for (const bool is_first : {false, true}) {
        std::size_t at = 1;
        for (; survives(is_first, at, kKill); ++at) {
        }
        EXPECT_GT(at, 25U) << "too few system calls were seen";
        for (at = 1; survives(is_first, at, kErrors.at(at % kErrors.size())); ++at) {
        }
    }
}

TEST(Commit, IsTheSameWhenEveryCallIsInterruptedAndHalfDone) {
    const Router router(kOld);
    long last = -1;
    const Outcome outcome = commit_watched(router.link, router.folder.path, [&](long number) {
        const bool transfers = number == SYS_read || number == SYS_write;
        const bool can_be_interrupted = transfers || number == SYS_openat || number == SYS_fsync;
        const bool is_again = std::exchange(last, number) == number;
        return can_be_interrupted && !is_again ? EINTR : transfers ? kHalve : kLetThrough;
    });
    EXPECT_EQ(outcome.status, 0) << outcome.err;
    EXPECT_EQ(content_of(router.running), kNew);
    router.expect_access();
}

TEST(Commit, EndsAndSaysSoWhenItIsBrokenOffLate) {
    for (const long call : {SYS_unlinkat, SYS_renameat}) {
        const Router router(kOld, false);
        const Outcome outcome = commit_watched(router.link, router.folder.path, [&](long number) {
            return number == call ? kTerminate : kLetThrough;
        });
        EXPECT_EQ(outcome.status, 0);
        router.expect_access();
        EXPECT_EQ(content_of(router.running), kNew);
        EXPECT_TRUE(holds(content_of(router.folder / "report"), "\ncommitted: "));
    }
}

TEST(Commit, WaitsForAnotherOfTheSameFileOnly) {
    const Folder folder;
    const std::string running = folder.put("running", content_of(kWarnedBefore));
    const std::string lock = folder / ".running.vrrp-valid-lock";
    const int other = make_locked(lock);
    const std::string holder = "process " + std::to_string(getpid());

    EXPECT_TRUE(
        ended(run({"commit", "--yes", "--lock-timeout", "0", "--running", running, kWarned}), 2,
              {running + ": " + holder + " is committing", "nothing was changed"}));
    EXPECT_EQ(run({"commit", "--yes", "--running", folder / "second", kWarned}).status, 0);

    // What it waited for has replaced the configuration and has removed the lock's file: it has
    // nothing to warn of only when it is checked against what is there by then.
    Terminal patient({"commit", "--yes", "--running", running, kWarned});
    patient.answer(running + ": waiting for " + holder, "");
    folder.put("new", content_of(kWarned) + "\n");
    fs::rename(folder / "new", running);
    fs::remove(lock);
    close(other);
    EXPECT_TRUE(ended(patient.finish(), 0, {"no changes"}));
    EXPECT_EQ(content_of(running), content_of(kWarned) + "\n");
    EXPECT_FALSE(fs::exists(lock));
}

TEST(Commit, TakesNoLockThatWasRemovedMeanwhile) {
    const Router router(kOld);
    const std::string lock = router.folder / ".running.vrrp-valid-lock";
    int other = -1;
    const Decide decide = [&](long number) {
        if (number == SYS_fcntl && other < 0) {
            EXPECT_EQ(fs::status(lock).permissions(), fs::perms(0660)) << "whoever may commit";
            fs::remove(lock);
            other = make_locked(lock);
        }
        return kLetThrough;
    };
    const Arguments at_once = {"--lock-timeout", "0"};
    EXPECT_EQ(commit_watched(router.link, router.folder.path, decide, at_once).status, 2);
    EXPECT_EQ(content_of(router.running), kOld);
    EXPECT_TRUE(fs::exists(lock)) << "it is another one's";
    close(other);
}

TEST(Commit, IsNotMadeOverWhatWasNotChecked) {
    const std::string commit =
        VRRP_VALID_COMMAND " commit --yes --lock-timeout 0 --accept-warnings --running running ";
    const std::vector<std::string> changes = {
        commit + kWarned + " >report",
        "rm running",
        "chmod 600 running",
        "cp -p running old; sed 's/2/3/' old >running; touch -r old running",
        "cp -p running same; mv same running",
        "cp -p running other; ln -sf other running",
        "echo {} >running",  // the first one is there meanwhile
    };
    for (const std::string& change : changes) {
        SCOPED_TRACE(change);
        const Folder folder;
        const std::string running = folder.put("running", content_of(kWarnedBefore));
        Arguments arguments = {"commit", "--running", running, kWarned};
        if (change == changes.back()) {
            fs::remove(running);
        } else {
            arguments.emplace_back("--yes");
        }
        std::string left;
        const Outcome outcome = confirm_after(arguments, [&] {
            // NOLINTNEXTLINE(cert-env33-c): of a folder and of changes of its own
            EXPECT_EQ(std::system(("cd " + folder.path + "; " + change).c_str()), 0);
            left = content_of(running);
        });
        EXPECT_TRUE(ended(outcome, 2, {"nothing was written"}));
        EXPECT_EQ(content_of(running), left);
        EXPECT_FALSE(fs::exists(folder / ".running.vrrp-valid-new"));
    }
}

TEST(Commit, IsNotMadeWhereTheLinkNoLongerLeads) {
    const Router router(kOld);
    const std::string other = router.elsewhere.put("other", kOld);
    const Decide decide = [&](long number) {
        if (number == SYS_fsync) {
            fs::remove(router.link);
            fs::create_symlink(other, router.link);
        }
        return kLetThrough;
    };
    EXPECT_TRUE(ended(commit_watched(router.link, router.folder.path, decide), 2,
                      {router.link + ": ", "nothing was written"}));
    EXPECT_EQ(content_of(router.running) + content_of(other), kOld + kOld);
}

TEST(Commit, RefusesWhatIsNoRegularFileBeforeItWaits) {
    const Folder folder;
    EXPECT_EQ(mkfifo((folder / "fifo").c_str(), 0600), 0);
    fs::create_symlink("/dev/null", folder / "link to a device");
    for (const std::string name : {"fifo", "link to a device", "", "."}) {
        EXPECT_TRUE(ended(run({"commit", "--running", folder / name, kWarned}), 2,
                          {(folder / name) + ": not a regular file"}));
    }
    EXPECT_EQ(std::distance(fs::directory_iterator(folder.path), {}), 2);
}

TEST(Commit, AnswersAnEndedReaderAndASizeLimitAsErrors) {
    const Folder folder;
    Surroundings surroundings;
    surroundings.before = [] {
        std::array<int, 2> ends{};
        const bool is_broken = pipe(ends.data()) == 0 && dup2(ends[1], STDOUT_FILENO) >= 0;
        close(is_broken ? ends[0] : STDOUT_FILENO);
    };
    const std::string running = folder.put("running", "{ }");
    const Arguments commit = {"commit", "--yes", "--running", running, folder.put("new", kNew)};
    EXPECT_TRUE(ended(run(commit, surroundings), 2,
                      {running + ": nothing was changed, but standard output"}));

    Arguments in_json = commit;
    in_json.insert(in_json.end(), {"--format", "json"});
    EXPECT_TRUE(ended(run(in_json, surroundings), 2,
                      {running + ": the new configuration is in its place, but"}));
    EXPECT_EQ(content_of(running), kNew);

    std::string many = R"({"l3-interface:config": {"interface": {"l3": [{"name": "0"})";
    for (int i = 1; i < 800; ++i) {
        many += R"(, {"name": ")" + std::to_string(i) + "\"}";
    }
    const std::string page = folder.put("page", "{ }");
    surroundings.before = [] {
        const rlimit limit{60000, 60000};
        setrlimit(RLIMIT_FSIZE, &limit);
    };
    EXPECT_TRUE(ended(run({"commit", "--yes", "--format", "html", "--running", page,
                           folder.put("many", many + "]}}}")},
                          surroundings),
                      2, {page + ": the new configuration is in its place, but a temporary file"}));

    surroundings.before = [] {
        const rlimit limit{1000, 1000};
        setrlimit(RLIMIT_FSIZE, &limit);
    };
    const std::string limited = folder.put("limited", "{ }");
    EXPECT_TRUE(ended(
        run({"commit", "--yes", "--silent", "--running", limited, folder / "new"}, surroundings), 2,
        {"nothing was changed: File too large"}));
    EXPECT_EQ(content_of(limited), "{ }");
}
