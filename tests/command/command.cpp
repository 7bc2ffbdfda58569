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

[[noreturn]] void execute(const Arguments& arguments, const Variables& environment,
                          const std::string& program) {
    for (const auto& [name, value] : environment) {
        setenv(name.c_str(), value.c_str(), 1);
    }
    std::vector<char*> argv = {const_cast<char*>("vrrp-valid")};
    for (const std::string& argument : arguments) {
        argv.push_back(const_cast<char*>(argument.c_str()));
    }
    argv.push_back(nullptr);
    execvp(program.c_str(), argv.data());
    _exit(127);
}

int wait_for(pid_t process) {
    int status = 0;
    EXPECT_EQ(waitpid(process, &status, 0), process);
    return status;
}

int exit_code(int status) {
    return WIFEXITED(status) ? WEXITSTATUS(status) : -WTERMSIG(status);
}

/// `process`, made by fork() or forkpty(). Throws when it could not be: a signal to -1 would end
/// every other process of the machine.
pid_t made(pid_t process) {
    if (process < 0) {
        throw std::system_error(errno, std::generic_category(),
                                "no process, or no terminal for it");
    }
    return process;
}

}  // namespace

bool holds(const std::string& text, const std::string& part) {
    return text.find(part) != std::string::npos;
}

testing::AssertionResult ended(const Outcome& outcome, int status, const Arguments& texts) {
    bool is_as_told = outcome.status == status;
    for (const std::string& text : texts) {
        is_as_told = is_as_told && holds(outcome.out + outcome.err, text);
    }
    return testing::AssertionResult(is_as_told)
           << outcome.status << ": " << outcome.out + outcome.err;
}

Outcome run(const Arguments& arguments, const Surroundings& surroundings) {
    const Folder streams;
    const std::string in = streams.put("in", surroundings.input);
    const std::string out = streams.put("out", "");
    const std::string err = streams.put("err", "");
    const pid_t process = made(fork());
    if (process == 0) {
        if (freopen(in.c_str(), "r", stdin) == nullptr ||
            freopen(err.c_str(), "w", stderr) == nullptr ||
            freopen(out.c_str(), "w", stdout) == nullptr ||
            chdir(surroundings.folder.c_str()) != 0) {
            _exit(127);
        }
        if (surroundings.tracer) {
            setenv("ASAN_OPTIONS", "detect_leaks=0", 1);  // the leak check is a tracer itself
        }
        if (surroundings.before) {
            surroundings.before();
        }
        execute(arguments, surroundings.environment, surroundings.program);
    }
    const int end = surroundings.tracer ? surroundings.tracer(process) : wait_for(process);
    return {exit_code(end), content_of(out), content_of(err)};
}

Terminal::Terminal(const Arguments& arguments, const std::function<void()>& before,
                   const Variables& environment, const std::string& program)
    : id_(made(forkpty(&master_, nullptr, nullptr, nullptr))) {
    if (id_ == 0) {
        setenv("TERM", "xterm", 1);
        unsetenv("NO_COLOR");
        if (before) {
            before();
        }
        execute(arguments, environment, program);
    }
}

void Terminal::answer(const std::string& question, const std::string& answer) {
    while (shown_.find(question, answered_) == std::string::npos) {
        ASSERT_TRUE(read_more()) << "never asked \"" << question << "\": " << shown_;
    }
    answered_ = shown_.find(question, answered_) + question.size();
    EXPECT_EQ(write(master_, answer.data(), answer.size()), static_cast<int>(answer.size()));
}

void Terminal::wait_for_read() const {
    const std::string status = "/proc/" + std::to_string(tcgetpgrp(master_)) + "/stat";
    while (!holds(content_of(status), ") S ")) {
        std::this_thread::yield();
    }
}

bool Terminal::echoes() const {
    termios settings{};
    EXPECT_EQ(tcgetattr(master_, &settings), 0);
    return (settings.c_lflag & ECHO) != 0;
}

Outcome Terminal::finish() {
    while (read_more()) {
    }
    const bool still_echoes = echoes();
    close(master_);
    return {exit_code(wait_for(id_)), shown_, {}, still_echoes};
}

bool Terminal::read_more() {
    pollfd shown{master_, POLLIN, 0};
    if (poll(&shown, 1, kPatience) == 0) {
        kill(id_, SIGKILL);
        return false;
    }
    std::array<char, 4096> bytes{};
    const ssize_t count = read(master_, bytes.data(), bytes.size());
    shown_.append(bytes.data(), count > 0 ? static_cast<std::size_t>(count) : 0);
    return count > 0;
}
