/// The subcommands. Each declares its own options, and how it runs once they are read.
#pragma once

#include <functional>

namespace CLI {
class App;
}

struct Subcommand {
    CLI::App* parser;          ///< held by the command's parser
    std::function<int()> run;  ///< does the work and gives the exit code; throws what stops it
};

Subcommand add_check_command(CLI::App& app);
Subcommand add_diff_command(CLI::App& app);
Subcommand add_report_command(CLI::App& app);
Subcommand add_rules_command(CLI::App& app);
Subcommand add_explain_command(CLI::App& app);
Subcommand add_keygen_command(CLI::App& app);
Subcommand add_encrypt_command(CLI::App& app);
Subcommand add_completion_command(CLI::App& app);
Subcommand add_complete_command(CLI::App& app);
