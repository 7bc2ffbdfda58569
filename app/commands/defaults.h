/// Defaults of options that are the same for every run, so that nobody has to type them.
#pragma once

#include <CLI/CLI.hpp>

/// Gives the options of `subcommand`, one of `app`'s, the defaults of the environment
/// (VRRP_VALID_MAX_FINDINGS for --max-findings) and, after those, of `.vrrp-valid.toml`: a key in
/// the section of a subcommand holds before one for all. The file is the working folder's, or the
/// nearest above it in its repository; names in it are relative to it, and when it is used a line
/// on standard error says so. Throws InputError for an option that no subcommand has, and for one
/// that a file must not set.
void set_defaults(CLI::App& app, CLI::App& subcommand);
