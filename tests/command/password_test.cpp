/// Passwords and keys: which are taken, where they may be seen, and what becomes of the terminal.
#include <fcntl.h>
#include <sys/ptrace.h>
#include <sys/stat.h>
#include <sys/user.h>
#include <sys/wait.h>
#include <unistd.h>

#include <csignal>
#include <fstream>
#include <sstream>

#include "command.h"

namespace fs = std::filesystem;

namespace {

const std::string kHexKey = "00112233445566778899aabbccddeeff0f1e2d3c4b5a69788796a5b4c3d2e1f0";
const std::string kKeyFile = "vrrp-valid-key " + kHexKey + "\n";
/// "s3cretPw", as it was encrypted with that key once.
const std::string kStored = "$aes-256-gcm$V0toXTWj84VtxNr1++bKOgJBYxPp9L8fVnaxC4fen7Bo87Rp";

/// A folder with the key file "key".
struct KeyFolder : Folder {
    KeyFolder() { fs::permissions(put("key", kKeyFile), fs::perms(0600)); }
    Arguments encrypt() const { return {"encrypt", "--key-file", *this / "key"}; }
    /// A candidate with `text` where the example has its password.
    std::string candidate_with(const std::string& text) const {
        const std::string in_clear =
            content_of(VRRP_VALID_EXAMPLES "/messages/password-in-clear/candidate.json");
        return put("candidate", replaced(in_clear, "changeme", text));
    }
    Outcome check(const std::string& text) const {
        return run({"check", "--key-file", *this / "key", candidate_with(text)});
    }
};

std::string bytes_of(const std::string& hex) {
    std::string bytes;
    for (std::size_t at = 0; at < hex.size(); at += 2) {
        bytes += static_cast<char>(std::stoi(hex.substr(at, 2), nullptr, 16));
    }
    return bytes;
}

/// What a stopped process can write to: all of it, or only what its stack held before.
std::string memory_of(pid_t process, bool only_dead_stack) {
    user_regs_struct registers{};
    ptrace(PTRACE_GETREGS, process, nullptr, &registers);
    std::ifstream maps("/proc/" + std::to_string(process) + "/maps");
    const int memory = open(("/proc/" + std::to_string(process) + "/mem").c_str(), O_RDONLY);
    std::string bytes;
    for (std::string line; std::getline(maps, line);) {
        std::istringstream fields(line);
        std::size_t start = 0;
        std::size_t end = 0;
        char dash = 0;
        std::string access;
        fields >> std::hex >> start >> dash >> end >> access;
        const bool is_stack = holds(line, "[stack]");
        end = only_dead_stack && is_stack ? registers.rsp - 128 : end;
        // What is larger is a sanitizer's own.
        if (access[1] != 'w' || (only_dead_stack && !is_stack) || end - start > 1U << 30U) {
            continue;
        }
        const std::size_t filled = bytes.size();
        bytes.resize(filled + end - start);
        const ssize_t count = pread(memory, &bytes[filled], end - start, static_cast<off_t>(start));
        bytes.resize(filled + static_cast<std::size_t>(std::max<ssize_t>(count, 0)));
    }
    close(memory);
    return bytes;
}

void stop(pid_t process) {
    EXPECT_EQ(ptrace(PTRACE_SEIZE, process, nullptr, PTRACE_O_TRACEEXIT), 0);
    ptrace(PTRACE_INTERRUPT, process, nullptr, nullptr);
    int status = 0;
    EXPECT_EQ(waitpid(process, &status, 0), process);
}

/// The wait status of the stopped `process`, which goes on to its end, and its memory then.
int end_of(pid_t process, std::string& memory) {
    int status = 0;
    for (;;) {
        ptrace(PTRACE_CONT, process, nullptr, nullptr);
        if (waitpid(process, &status, 0) != process || !WIFSTOPPED(status)) {
            return status;
        }
        if (status >> 8 == (SIGTRAP | PTRACE_EVENT_EXIT << 8)) {
            memory = memory_of(process, false);
        }
    }
}

/// Neither the key, a half of it in a register's width, nor how it stands in its file.
void expect_no_key_in(const std::string& memory, const std::string& hex) {
    EXPECT_GT(memory.size(), 1000U);
    for (const std::string& text : {hex, bytes_of(hex)}) {
        for (std::size_t at = 0; at < text.size(); at += 16) {
            EXPECT_FALSE(holds(memory, text.substr(at, 16))) << "the key's part at " << at;
        }
    }
}

/// For a Terminal: the command runs in a job of its own, as below a shell that stops when the job
/// does, and that continues with it.
void be_job_of_shell() {
    static_cast<void>(signal(SIGTTOU, SIG_IGN));
    const pid_t job = fork();
    const pid_t self = job == 0 ? getpid() : job;
    setpgid(self, self);
    tcsetpgrp(STDIN_FILENO, self);
    if (job == 0) {
        static_cast<void>(signal(SIGTTOU, SIG_DFL));
        return;
    }
    int status = 0;
    while (waitpid(job, &status, WUNTRACED) == job && WIFSTOPPED(status)) {
        static_cast<void>(raise(SIGSTOP));
        kill(job, SIGCONT);
    }
    _exit(WIFEXITED(status) ? WEXITSTATUS(status) : 127);
}

}  // namespace

TEST(Password, IsTakenInClearWithItsKeyOnly) {
    const KeyFolder folder;
    umask(0);
    EXPECT_EQ(run({"keygen", folder / "other"}).status, 0);
    EXPECT_EQ(fs::status(folder / "other").permissions(), fs::perms(0600));
    EXPECT_EQ(folder.check(kStored).status, 0) << "every later version reads it";
    for (const std::string password : {"Se!&\"% x", "x", "äöüß"}) {
        for (const std::string made_with : {"key", "other"}) {
            const Arguments encrypt = {"encrypt", "--key-file", folder / made_with};
            const Outcome made = run(encrypt, {password + "\r\nnot this\n"});
            EXPECT_EQ(made.status, 0) << made.err;
            EXPECT_NE(made.out, run(encrypt, {password}).out) << "a nonce was used twice";
            const Outcome checked = folder.check(made.out.substr(0, made.out.find('\n')));
            EXPECT_EQ(checked.status, made_with == "key" ? 0 : 1) << checked.out;
            EXPECT_EQ(holds(checked.out, "bad length/size."), made_with != "key") << checked.out;
            const std::string shown = made.out + made.err + checked.out + checked.err;
            EXPECT_FALSE(holds(shown, kHexKey)) << shown;
            EXPECT_FALSE(password.size() > 1 && holds(shown, password)) << shown;
        }
    }
}

TEST(Password, IsReadWholeOrNotAtAll) {
    const KeyFolder folder;
    Surroundings surroundings;
    surroundings.before = [] {  // its second half comes late, and the input does not wait for it
        std::array<int, 2> ends{};
        EXPECT_EQ(pipe2(ends.data(), O_NONBLOCK), 0);
        EXPECT_EQ(write(ends[1], "12345678", 8), 8);
        dup2(ends[0], STDIN_FILENO);
        if (fork() == 0) {
            usleep(50000);
            _exit(write(ends[1], "9\n", 2) == 2 ? 0 : 1);
        }
        close(ends[1]);
    };
    EXPECT_TRUE(ended(run(folder.encrypt(), surroundings), 2, {"too long"}));

    surroundings.before = [] { dup2(open("/", O_RDONLY), STDIN_FILENO); };
    EXPECT_TRUE(ended(run(folder.encrypt(), surroundings), 2, {"standard input cannot be read"}));
}

TEST(Password, LeavesTheTerminalAsItWasWhateverSignalComes) {
    const KeyFolder folder;
    for (const int signal : {SIGHUP, SIGINT, SIGQUIT, SIGTERM}) {
        SCOPED_TRACE(strsignal(signal));
        Terminal ended(folder.encrypt());
        ended.answer("Password: ", "");
        ended.wait_for_read();
        EXPECT_FALSE(ended.echoes());
        kill(ended.process(), signal);
        const Outcome outcome = ended.finish();
        EXPECT_EQ(outcome.status, -signal);
        EXPECT_TRUE(outcome.echoes);

        Terminal deaf(folder.encrypt(), [&] { static_cast<void>(::signal(signal, SIG_IGN)); });
        deaf.answer("Password: ", "");
        deaf.wait_for_read();
        kill(deaf.process(), signal);
        deaf.answer("Password: ", "s3cret\n");
        deaf.answer("Again: ", "s3cret\n");
        EXPECT_EQ(deaf.finish().status, 0);
    }
}

TEST(Password, IsHiddenAgainWhenTheJobContinues) {
    const KeyFolder folder;
    Terminal terminal(folder.encrypt(), be_job_of_shell);
    terminal.answer("Password: ", "");
    terminal.wait_for_read();
    terminal.answer("", "\032");  // Ctrl-Z
    int status = 0;
    ASSERT_EQ(waitpid(terminal.process(), &status, WUNTRACED), terminal.process());
    ASSERT_TRUE(WIFSTOPPED(status));
    EXPECT_TRUE(terminal.echoes());
    kill(terminal.process(), SIGCONT);
    terminal.answer("Password: ", "");
    EXPECT_FALSE(terminal.echoes());
    terminal.answer("", "s3cret\n");
    terminal.answer("Again: ", "s3cret\n");
    const Outcome outcome = terminal.finish();
    EXPECT_EQ(outcome.status, 0) << outcome.out;
    EXPECT_TRUE(outcome.echoes);
    EXPECT_FALSE(holds(outcome.out, "s3cret"));
}

TEST(Password, AndItsKeyAreNotLeftInMemory) {
    const KeyFolder folder;
    Terminal terminal(folder.encrypt());
    terminal.answer("Password: ", "");
    stop(terminal.process());
    expect_no_key_in(memory_of(terminal.process(), true), kHexKey);
    EXPECT_TRUE(holds(memory_of(terminal.process(), false), bytes_of(kHexKey))) << "it is in use";
    ptrace(PTRACE_DETACH, terminal.process(), nullptr, nullptr);
    terminal.answer("", "s3cretPw\n");
    terminal.answer("Again: ", "");
    stop(terminal.process());
    terminal.answer("", "s3cretPw\n");
    std::string memory;
    end_of(terminal.process(), memory);
    expect_no_key_in(memory, kHexKey);

    Surroundings surroundings;
    const std::string next = folder / "next";
    EXPECT_EQ(mkfifo(next.c_str(), 0600), 0);
    const std::string candidate = folder.candidate_with(kStored);
    surroundings.tracer = [&](pid_t process) {
        const int writer = open(next.c_str(), O_WRONLY);  // the first candidate has been checked
        stop(process);
        expect_no_key_in(memory_of(process, true), kHexKey);
        EXPECT_EQ(write(writer, "{}", 2), 2);
        close(writer);
        return end_of(process, memory);
    };
    const Arguments check = {"check", "--jobs", "1", "--key-file", folder / "key", candidate, next};
    EXPECT_EQ(run(check, surroundings).status, 0);
    expect_no_key_in(memory, kHexKey);
    EXPECT_FALSE(holds(memory, "s3cretPw"));

    surroundings.tracer = [&](pid_t process) {
        stop(process);
        return end_of(process, memory);
    };
    EXPECT_EQ(run({"keygen", folder / "new"}, surroundings).status, 0);
    expect_no_key_in(memory, content_of(folder / "new").substr(15, 64));
}
