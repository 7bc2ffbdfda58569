/// Runs the installed command as an operator, a pipeline or a debugger does.
#pragma once

#include <functional>
#include <vector>

#include "folder.h"

bool holds(const std::string& text, const std::string& part);

using Arguments = std::vector<std::string>;

struct Outcome {
    int status;       ///< the exit code, or minus the signal that ended it
    std::string out;  ///< a terminal's: everything that it showed
    std::string err;
    bool echoes = true;  ///< whether the terminal echoes in the end
};

/// What a process does last before it is the program.
using Preparation = std::function<void()>;

/// Returns once the process waits for something.
void wait_until_it_waits(pid_t process);

/// Watches a process to its end and gives its wait status.
using Watch = std::function<int(pid_t)>;
int wait_for(pid_t process);

/// Runs the command, its standard streams no terminal.
Outcome run(const Arguments& arguments, const Preparation& before = {},
            const Watch& watch = wait_for, const std::string& program = VRRP_VALID_COMMAND);

/// Runs bash on a terminal, and types each second text once the first has been shown again and
/// bash, or what it has become, waits; a failure when it is not shown within a minute.
Outcome run_on_terminal(const Arguments& arguments, const Preparation& before,
                        const std::vector<std::pair<std::string, std::string>>& answers);
