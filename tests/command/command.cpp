#include "command.h"

#include <poll.h>
#include <pty.h>
#include <sys/wait.h>
#include <unistd.h>

#include <array>
#include <csignal>
#include <system_error>
#include <thread>

namespace {

constexpr int kPatience = 60000;  // milliseconds

/// Nothing that whoever runs the tests has set or ignores reaches the program.
[[noreturn]] void execute(const std::string& program, const Arguments& arguments,
                          const Preparation& before) {
    for (const int ignored : {SIGHUP, SIGINT, SIGQUIT, SIGTERM}) {
        static_cast<void>(signal(ignored, SIG_DFL));
    }
    for (const char* const name : {"NO_COLOR", "CLICOLOR_FORCE", "TMPDIR"}) {
        unsetenv(name);
    }
    setenv("TERM", "xterm", 1);
    if (before) {
        before();
    }
    std::vector<char*> argv = {const_cast<char*>("vrrp-valid")};
    for (const std::string& argument : arguments) {
        argv.push_back(const_cast<char*>(argument.c_str()));
    }
    argv.push_back(nullptr);
    execvp(program.c_str(), argv.data());
    _exit(127);
}

int exit_code(int status) {
    return WIFEXITED(status) ? WEXITSTATUS(status) : -WTERMSIG(status);
}

/// `process`, made by fork() or forkpty(). Throws when it could not be: to wait for -1, or to
/// signal it, would mean every other process.
pid_t made(pid_t process) {
    if (process < 0) {
        throw std::system_error(errno, std::generic_category(), "no process, or no terminal");
    }
    return process;
}

/// Waits for what the terminal shows next and adds it; whether there is anything.
bool read_more(int terminal, std::string& shown) {
    pollfd input{terminal, POLLIN, 0};
    std::array<char, 4096> bytes{};
    const ssize_t count =
        poll(&input, 1, kPatience) == 0 ? 0 : read(terminal, bytes.data(), bytes.size());
    shown.append(bytes.data(), count > 0 ? static_cast<std::size_t>(count) : 0);
    return count > 0;
}

}  // namespace

bool holds(const std::string& text, const std::string& part) {
    return text.find(part) != std::string::npos;
}

void wait_until_it_waits(pid_t process) {
    while (!holds(content_of("/proc/" + std::to_string(process) + "/stat"), ") S ")) {
        std::this_thread::yield();
    }
}

int wait_for(pid_t process) {
    int status = 0;
    EXPECT_EQ(waitpid(process, &status, 0), process);
    return status;
}

Outcome run(const Arguments& arguments, const Preparation& before, const Watch& watch,
            const std::string& program) {
    const Folder streams;
    const std::string out = streams.put("out", "");
    const std::string err = streams.put("err", "");
    const pid_t process = made(fork());
    if (process == 0) {
        if (freopen("/dev/null", "r", stdin) == nullptr ||
            freopen(err.c_str(), "w", stderr) == nullptr ||
            freopen(out.c_str(), "w", stdout) == nullptr) {
            _exit(127);
        }
        execute(program, arguments, before);
    }
    const int end = watch(process);
    return {exit_code(end), content_of(out), content_of(err)};
}

Outcome run_on_terminal(const Arguments& arguments, const Preparation& before,
                        const std::vector<std::pair<std::string, std::string>>& answers) {
    int terminal = -1;
    const pid_t process = made(forkpty(&terminal, nullptr, nullptr, nullptr));
    if (process == 0) {
        execute("bash", arguments, before);
    }
    std::string shown;
    std::size_t answered = 0;
    for (const auto& [question, answer] : answers) {
        while (shown.find(question, answered) == std::string::npos && read_more(terminal, shown)) {
        }
        const std::size_t at = shown.find(question, answered);
        EXPECT_NE(at, std::string::npos) << "never asked \"" << question << "\"";
        answered = at + question.size();
        // A signal that comes before the command waits would not end its wait.
        if (!answer.empty()) {
            wait_until_it_waits(process);
        }
        EXPECT_EQ(write(terminal, answer.data(), answer.size()), ssize_t(answer.size()));
    }
    while (read_more(terminal, shown)) {
    }
    termios settings{};
    EXPECT_EQ(tcgetattr(terminal, &settings), 0);
    close(terminal);
    return {exit_code(wait_for(process)), shown, {}, (settings.c_lflag & ECHO) != 0};
}
