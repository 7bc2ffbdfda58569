/// Reads the command line.
#pragma once

#include <CLI/CLI.hpp>
#include <string>

/// The subcommand `name`. Throws InputError, with the nearest, when there is none.
CLI::App* find_subcommand(CLI::App& app, const std::string& name);

/// Parses the command line: the subcommand, then its options and arguments. What it leaves out has
/// the defaults of the environment and of the defaults file. Throws InputError, or CLI::Success
/// when there was a question only (--help).
void parse_command_line(CLI::App& app, int argc, const char* const* argv);
