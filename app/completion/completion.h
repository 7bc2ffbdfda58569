/// Completion scripts, made from the command's own options so that none can be missing.
#pragma once

#include <CLI/CLI.hpp>
#include <string>
#include <vector>

std::string bash_completion(const CLI::App& app);
std::string fish_completion(const CLI::App& app);
std::string zsh_completion(const CLI::App& app);

/// What may be typed for an option's value or an argument.
struct Completion {
    enum class Kind { nothing, text, files, folders, rules, words };
    Kind kind = Kind::text;
    std::vector<std::string> words = {};
};

/// `nothing` for a flag.
Completion completion_of(const CLI::App& app, const CLI::Option& option);

/// "-q", "--quiet"; nothing for an argument without a name.
std::vector<std::string> option_names(const CLI::Option& option);

/// `text` in single quotes of a shell, in which `quote` replaces one.
std::string quoted(const std::string& text, const std::string& quote);

std::vector<const CLI::App*> subcommands_of(const CLI::App& app);
std::vector<std::string> subcommand_names(const CLI::App& app);
