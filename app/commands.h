/// What the command does once its arguments are read. Each returns the exit code.
#pragma once

#include <string>
#include <vector>

/// Exit codes.
constexpr int kExitClean = 0;
constexpr int kExitErrors = 1;
constexpr int kExitCannotJudge = 2;
constexpr int kExitWarnings = 3;

struct JudgeOptions {
    std::vector<std::string> candidates;  ///< files, "-" for standard input; commit takes one
    std::string running;                  ///< empty for an empty running configuration
    std::string format = "text";          ///< or "json" or "junit"
    std::string plugin_file;
    std::string yang_dir;
    std::string key_file;                ///< empty for none
    std::vector<std::string> selectors;  ///< the rules to run; empty for all
    bool accept_warnings = false;
    bool quiet = false;
};

/// Judges every candidate; the worst outcome is the exit code.
int run_check(const JudgeOptions& options);

/// Judges the one candidate and, when nothing stands against it, makes it the running
/// configuration.
int run_commit(const JudgeOptions& options);

/// Lists the uses of the validation point that the model makes.
int run_rules(const std::string& yang_dir);

/// Tells what the rule `selector` demands, or every rule when it is empty; as text or as Markdown.
int run_explain(const std::string& yang_dir, const std::string& selector, bool markdown);

int run_keygen(const std::string& file);
int run_encrypt(const std::string& key_file);
