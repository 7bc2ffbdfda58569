/// Runs the installed command as an operator, a pipeline or a debugger does.
#pragma once

#include <functional>
#include <map>
#include <vector>

#include "folder.h"

bool holds(const std::string& text, const std::string& part);

using Arguments = std::vector<std::string>;

struct Outcome {
    int status;       ///< the exit code, or minus the signal that ended the command
    std::string out;  ///< a terminal's: everything that it showed
    std::string err;
    bool echoes = true;  ///< whether the terminal echoes in the end
};

/// Whether it ended with `status`, and says each of the texts.
testing::AssertionResult ended(const Outcome& outcome, int status, const Arguments& texts);

using Variables = std::map<std::string, std::string>;

struct Surroundings {
    std::string input = {};             ///< what standard input holds
    std::string folder = ".";           ///< the working folder
    Variables environment = {};         ///< beside the test's own
    std::function<void()> before = {};  ///< what the process does last before it is the command
    /// Watches the process to its end and gives its wait status.
    std::function<int(pid_t)> tracer = {};
    std::string program = VRRP_VALID_COMMAND;  ///< or another to run the same way
};

/// Runs the command, its standard streams no terminal.
Outcome run(const Arguments& arguments, const Surroundings& surroundings = {});

/// The command at work on a terminal. What it does not show within a minute, it never does.
class Terminal {
  public:
    explicit Terminal(const Arguments& arguments, const std::function<void()>& before = {},
                      const Variables& environment = {},
                      const std::string& program = VRRP_VALID_COMMAND);
    /// Types `answer` once the terminal has shown `question` again; a failure when it never does.
    void answer(const std::string& question, const std::string& answer);
    /// Returns once the command waits for what is typed.
    void wait_for_read() const;
    bool echoes() const;
    pid_t process() const { return id_; }
    Outcome finish();

  private:
    bool read_more();

    int master_ = -1;
    pid_t id_;
    std::string shown_;
    std::size_t answered_ = 0;
};
