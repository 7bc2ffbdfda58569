/// Options that several subcommands share.
#pragma once

#include <CLI/CLI.hpp>
#include <string>
#include <vector>

#include "checking/checker.h"
#include "reports/report_format.h"

/// What `check` and `commit` check, with what, and how they report it.
struct CheckOptions {
    CheckerOptions checker;
    std::vector<std::string> candidates;  ///< files, "-" for standard input; commit takes one
    std::string running;                  ///< empty for an empty running configuration
    ReportOptions report;
    std::size_t max_warnings = 0;         ///< that are no failure, in all reports together
    std::size_t max_size = kLargestFile;  ///< of each file, in bytes
};

/// A subcommand with an example of its arguments at the end of its help.
CLI::App* add_subcommand(CLI::App& app, const std::string& name, const std::string& description,
                         const std::string& example);

/// `--yang-dir`, the installed models unless given.
void add_yang_dir(CLI::App& command, std::string& yang_dir);

CLI::Option* add_running(CLI::App& command, std::string& running, const std::string& description);
CLI::Option* add_candidates(CLI::App& command, std::vector<std::string>& candidates);

/// What an option that counts takes: `least` or more, which a mere conversion would let wrap.
CLI::Validator whole_number(std::size_t least);

/// `--max-size`, for every configuration that the subcommand reads.
void add_max_size(CLI::App& command, std::size_t& max_size);

/// `--color`: when to colour the text.
void add_colour(CLI::App& command, std::string& when);

/// How a subcommand prints reports, and how many warnings are no failure.
void add_report_options(CLI::App& command, ReportOptions& options, std::size_t& max_warnings);

/// `--edit` and `--ignore-unknown`.
void add_reading_options(CLI::App& command, CheckerOptions& options);

/// The options beside those that all of `check` and `commit` take.
void add_check_options(CLI::App& command, CheckOptions& options);

/// Throws InputError when more than one of `files` is to be read from standard input.
void require_one_standard_input(const std::vector<std::string>& files);
