#include <algorithm>
#include <csignal>
#include <iostream>
#include <optional>

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

/// Runs `subcommand`, its output in the file that it is given for that, and gives its exit code.
int run_with_output(const Subcommand& subcommand) {
    const std::string output = output_of(*subcommand.parser);
    std::optional<OutputFile> file;
    try {
        if (!output.empty()) {
            require_no_input(output, inputs_of(*subcommand.parser));
            file.emplace(output);
        }
        const int code = subcommand.run();
        if (file) {
            file->put_in_place();
        }
        return code;
    } catch (const OutputError& error) {
        throw InputError((file ? output : "standard output") +
                         " cannot be written: " + error.code().message());
    }
}

int run(int argc, char** argv) {
    CLI::App app("Checks VRRP configuration before it is committed.", "vrrp-valid");
    app.require_subcommand(1);
    app.set_version_flag("-V,--version", "vrrp-valid " VRRP_VALID_VERSION);
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
