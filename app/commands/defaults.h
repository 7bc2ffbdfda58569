/// Defaults of options that are the same for every run, so that nobody has to type them.
#pragma once

#include <CLI/CLI.hpp>

/// Whether the working folder has a `.vrrp-valid.toml`.
bool has_defaults_file();

/// Gives the options of `subcommand`, one of `app`'s, the defaults that `.vrrp-valid.toml` in the
/// working folder sets (a key is for every subcommand, or in a section for one) and, before
/// those, the environment (VRRP_VALID_MAX_WARNINGS for --max-warnings). Throws InputError for a
/// key that no subcommand has and for what a file found in a folder must not decide.
void set_defaults(CLI::App& app, CLI::App& subcommand);
