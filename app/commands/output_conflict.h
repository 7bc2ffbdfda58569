/// `--output` and what is read.
#pragma once

#include <CLI/CLI.hpp>
#include <string>

/// Throws InputError when `output` would replace a file that `subcommand`, whose options are read,
/// is to read, also one that a list names or a folder holds.
void require_no_input(CLI::App& subcommand, const std::string& output);
