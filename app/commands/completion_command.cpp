#include "commands/commands.h"
#include "commands/exit_code.h"
#include "commands/options.h"
#include "completion/completion.h"
#include "terminal/output.h"

Subcommand add_completion_command(CLI::App& app) {
    const auto shell = std::make_shared<std::string>();
    CLI::App* const command =
        add_subcommand(app, "completion", "Print the completion script of a shell", "bash");
    command->add_option("SHELL", *shell, "The shell")
        ->required()
        ->check(CLI::IsMember({"bash", "fish", "zsh"}));
    return {command, [&app, shell] {
                print(*shell == "bash"   ? bash_completion(app)
                      : *shell == "fish" ? fish_completion(app)
                                         : zsh_completion(app));
                return kExitClean;
            }};
}
