/// Reads the command line, in the order and with the slips that people type it.
#pragma once

#include <CLI/CLI.hpp>
#include <string>
#include <vector>

/// All of the command's subcommands.
std::vector<CLI::App*> all_subcommands(CLI::App& app);

/// The subcommand `name`. Throws InputError, with the nearest, when there is none.
CLI::App* find_subcommand(CLI::App& app, const std::string& name);

/// `arguments` with the subcommand in front, whatever options are given before it.
std::vector<std::string> subcommand_first(CLI::App& app, std::vector<std::string> arguments);

/// Parses `arguments`, the subcommand in front, with the defaults of the environment and of the
/// working folder. Throws InputError, or CLI::Success when there was a question only (--help).
void parse_command_line(CLI::App& app, std::vector<std::string> arguments);
