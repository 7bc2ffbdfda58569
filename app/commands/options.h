/// Options that several subcommands share.
#pragma once

#include <CLI/CLI.hpp>
#include <string>
#include <vector>

#include "checking/checker.h"
#include "reports/report_format.h"

/// A subcommand with an example of its arguments at the end of its help.
CLI::App* add_subcommand(CLI::App& app, const std::string& name, const std::string& description,
                         const std::string& example);

/// Makes a plain name of a name, and refuses an empty one: it is a variable that is not set, and
/// must not pass for an option that was not given.
CLI::Validator file_name();

/// What an option that counts takes: `least` or more, which a mere conversion would let wrap.
CLI::Validator whole_number(std::size_t least);

/// An option or argument that names a file, or several.
template <typename Names>
CLI::Option* add_file(CLI::App& command, const std::string& option, Names& names,
                      const std::string& description) {
    return command.add_option(option, names, description)
        ->type_name("FILE")
        ->transform(file_name());
}

/// `--yang-dir`, the installed models unless given.
void add_yang_dir(CLI::App& command, std::string& yang_dir);

/// The argument CANDIDATE, one or several.
template <typename Names>
CLI::Option* add_candidate(CLI::App& command, Names& names) {
    return add_file(command, "CANDIDATE", names,
                    "A configuration in RFC 7951 JSON or NETCONF XML; - is standard input");
}

/// How a subcommand prints reports, and how many warnings are no failure.
void add_report_options(CLI::App& command, ReportOptions& options, std::size_t& accepted_warnings);

/// `--edit` and `--ignore-unknown`.
void add_reading_options(CLI::App& command, bool& is_edit, bool& ignore_unknown);

/// `--max-size`, of every configuration that the subcommand reads.
void add_max_size(CLI::App& command, std::size_t& max_size);

/// `--output`, whose value whoever runs the subcommand reads from the parser.
void add_output(CLI::App& command);

/// `--color`: when to colour the text.
void add_colour(CLI::App& command, std::string& when);

/// Throws InputError when more than one of `files` is to be read from standard input.
void require_one_standard_input(const std::vector<std::string>& files);
