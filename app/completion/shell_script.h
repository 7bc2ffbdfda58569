/// What makes a shell complete the command.
#pragma once

#include <map>
#include <string>

/// Returns the script of each shell, by the shell's name. It asks the command, `vrrp-valid complete
/// -- WORD...`, and completes the names of files where that has no answer.
std::map<std::string, std::string> shell_scripts();
