#include <CLI/CLI.hpp>
#include <csignal>
#include <iostream>

#include "commands/commands.h"
#include "commands/exit_code.h"
#include "terminal/output.h"

namespace {

/// An empty name is a variable that is not set: it must not pass for an option that was not given.
void require_names(CLI::App& app) {
    const CLI::Validator is_named(
        [](const std::string& name) {
            return name.empty() ? std::string("the name is empty") : std::string();
        },
        {});
    for (CLI::App* const command : app.get_subcommands({})) {
        for (CLI::Option* const option : command->get_options()) {
            const std::string type = option->get_type_name();
            if (type.rfind("FILE", 0) == 0 || type.rfind("DIR", 0) == 0) {
                option->check(is_named);
            }
        }
    }
}

int run(int argc, char** argv) {
    CLI::App app("Checks VRRP configuration before it is committed.", "vrrp-valid");
    app.require_subcommand(1);
    app.failure_message([](const CLI::App*, const CLI::Error& error) {
        return complaint(error.what() + std::string("; run vrrp-valid --help"));
    });
    app.set_version_flag("--version", "vrrp-valid " VRRP_VALID_VERSION);
    app.footer(
        "Exit codes: 0 nothing found, 1 errors, 2 could not check, 3 warnings only.\n"
        "Example: vrrp-valid check --running running.json candidate.json");
    const std::vector<Subcommand> subcommands = {add_check_command(app),  add_diff_command(app),
                                                 add_report_command(app), add_commit_command(app),
                                                 add_rules_command(app),  add_explain_command(app),
                                                 add_keygen_command(app), add_encrypt_command(app)};
    require_names(app);
    try {
        app.parse(argc, argv);
    } catch (const CLI::ParseError& error) {
        return app.exit(error) == 0 ? kExitClean : kExitCannotCheck;
    }
    const auto given = std::find_if(subcommands.begin(), subcommands.end(),
                                    [](const Subcommand& one) { return one.parser->parsed(); });
    return given->run();
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
