/// What may be typed next, from the command's own options so that none can be missing.
#pragma once

#include <CLI/CLI.hpp>
#include <functional>
#include <string>
#include <vector>

using RuleNames = std::function<std::vector<std::string>()>;

/// What may take the place of the last of `words`, which follow the command's name: a word a line,
/// and behind a tab what it means. Empty where the name of a file or any text belongs. The shell
/// chooses those that begin as the last word does.
std::string next_words(const CLI::App& app, const RuleNames& rule_names,
                       std::vector<std::string> words);
