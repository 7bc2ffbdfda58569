/// What the command does once its arguments are read. Each returns the exit code.
#pragma once

#include <string>
#include <vector>

/// Exit codes: the worst that was found.
constexpr int kExitClean = 0;
constexpr int kExitErrors = 1;
constexpr int kExitCannotJudge = 2;
constexpr int kExitWarnings = 3;

struct JudgeOptions {
    std::string running;  ///< empty for an empty running configuration
    std::string format = "text";
    std::string plugin_file;
    std::string yang_dir;
    std::string key_file;  ///< empty for none
    bool accept_warnings = false;
};

int run_check(const JudgeOptions& options, const std::string& candidate);
int run_commit(const JudgeOptions& options, const std::string& candidate);
int run_rules(const std::string& yang_dir);
int run_keygen(const std::string& file);
int run_encrypt(const std::string& key_file);
