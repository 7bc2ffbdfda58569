#include "commands/command_line.h"
#include "commands/commands.h"
#include "commands/exit_code.h"
#include "commands/options.h"
#include "terminal/output.h"

Subcommand add_help_command(CLI::App& app) {
    const auto name = std::make_shared<std::string>();
    CLI::App* const command = add_subcommand(app, "help", "Show the help of a command", "check");
    command->add_option("COMMAND", *name, "The command; without it, all of them")
        ->type_name("COMMAND");
    return {
        command, [&app, name] {
            app.clear();  // which would show the help of the command that was given, this one
            print(name->empty() ? app.help() : find_subcommand(app, *name)->help(app.get_name()));
            return kExitClean;
        }};
}
