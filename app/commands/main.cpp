#include <algorithm>
#include <csignal>
#include <iostream>

#include "commands/command_line.h"
#include "commands/commands.h"
#include "commands/exit_code.h"
#include "commands/options.h"
#include "commands/output_conflict.h"
#include "errors/input_error.h"
#include "files/interrupt.h"
#include "terminal/output.h"
#include "terminal/output_file.h"

namespace {

constexpr Subcommand (*kSubcommands[])(CLI::App&) = {
    add_check_command,   add_diff_command,       add_report_command,
    add_rules_command,   add_explain_command,    add_keygen_command,
    add_encrypt_command, add_completion_command, add_complete_command,
};

/// Runs `subcommand`, whose output goes to the file `output`, and gives its exit code.
int run_into_file(const Subcommand& subcommand, const std::string& output) {
    require_no_input(output, inputs_of(*subcommand.parser));
    OutputFile file(output);
    const int code = subcommand.run();
    try {
        file.put_in_place();
    } catch (const InputError& error) {
        throw InputError(error.what() +
                         std::string("; without that the exit code would have been ") +
                         std::to_string(code));
    }
    return code;
}

int run_with_output(const Subcommand& subcommand) {
    const std::string output = output_of(*subcommand.parser);
    const bool is_file = !output.empty();
    try {
        return is_file ? run_into_file(subcommand, output) : subcommand.run();
    } catch (const OutputError& error) {
        throw InputError((is_file ? output : "standard output") +
                         " cannot be written: " + error.code().message());
    }
}

int run(int argc, char** argv) {
    CLI::App app("Checks VRRP configuration before it is committed.", "vrrp-valid");
    app.require_subcommand(1);
    app.set_version_flag("--version", "vrrp-valid " VRRP_VALID_VERSION);
    app.footer(
        "Exit codes: 0 nothing found, 1 errors, 2 could not be checked, 3 warnings only.\n"
        "Example: vrrp-valid check --running running.json candidate.json");
    std::vector<Subcommand> subcommands;
    for (const auto& add : kSubcommands) {
        subcommands.push_back(add(app));
    }
    add_subcommand(app, "help", "Show the help of a command", "check")
        ->add_option("COMMAND", "The command; without it, all of them")
        ->type_name("COMMAND");
    try {
        parse_command_line(app, argc, argv);
    } catch (const CLI::Success& question) {
        return app.exit(question);
    }
    const auto given = std::find_if(subcommands.begin(), subcommands.end(),
                                    [](const Subcommand& one) { return one.parser->parsed(); });
    const int code = run_with_output(*given);
    if (code == kInterrupted) {
        end_as_interrupted();
    }
    return code;
}

}  // namespace

int main(int argc, char** argv) {
    // A reader that went away and a file size limit are failed writes, which are told.
    static_cast<void>(std::signal(SIGPIPE, SIG_IGN));
    static_cast<void>(std::signal(SIGXFSZ, SIG_IGN));
    try {
        return run(argc, argv);
    } catch (const std::exception& error) {
        std::cerr << complaint(error.what());
        return kExitCannotCheck;
    }
}
