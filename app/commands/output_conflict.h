/// `--output` and what is read.
#pragma once

#include <CLI/CLI.hpp>
#include <string>
#include <vector>

/// The file that takes the output of `command`, whose options are read; empty for standard output.
std::string output_of(const CLI::App& command);

/// The files and folders that the options of `command` name to be read.
std::vector<std::string> inputs_of(const CLI::App& command);

/// Throws InputError when `output` would replace one of `inputs`, or be a configuration in a folder
/// among them.
void require_no_input(const std::string& output, const std::vector<std::string>& inputs);
