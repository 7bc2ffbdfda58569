/// What the command does once its arguments are read. Each returns the exit code.
#pragma once

#include <string>
#include <vector>

#include "checking/checker.h"

struct CheckOptions {
    CheckerOptions checker;
    std::vector<std::string> candidates;  ///< files, "-" for standard input; commit takes one
    std::string running;                  ///< empty for an empty running configuration
    std::string format = "text";          ///< or "json" or "junit"
    bool accept_warnings = false;
    bool quiet = false;
};

/// Throws CannotCheck when more than one configuration is to be read from standard input.
void require_one_standard_input(const CheckOptions& options);

/// Checks every candidate; the worst outcome is the exit code.
int run_check(const CheckOptions& options);

/// Prints what the one candidate changes in the running configuration.
int run_diff(const CheckOptions& options);

/// Checks the one candidate and, when nothing is found, makes it the running configuration.
int run_commit(const CheckOptions& options);

/// Lists the uses of the validation point that the model makes.
int run_rules(const std::string& yang_dir);

/// Tells what the rule `selector` demands, or every rule when it is empty; as text or as Markdown.
int run_explain(const std::string& yang_dir, const std::string& selector, bool markdown);

int run_keygen(const std::string& file);
int run_encrypt(const std::string& key_file);
