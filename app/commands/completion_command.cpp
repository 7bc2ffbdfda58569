#include "commands/commands.h"
#include "commands/exit_code.h"
#include "commands/install_layout.h"
#include "commands/options.h"
#include "completion/next_words.h"
#include "completion/shell_script.h"
#include "configuration/yang_model.h"
#include "terminal/output.h"

Subcommand add_completion_command(CLI::App& app) {
    const auto shell = std::make_shared<std::string>();
    CLI::App* const command =
        add_subcommand(app, "completion", "Print the completion script of a shell", "bash");
    command->add_option("SHELL", *shell, "The shell")
        ->required()
        ->check(CLI::IsMember({"bash", "fish", "zsh"}));
    add_output(*command);
    return {command, [shell] {
                print(shell_scripts().at(*shell));
                return kExitClean;
            }};
}

Subcommand add_complete_command(CLI::App& app) {
    const auto words = std::make_shared<std::vector<std::string>>();
    CLI::App* const command = app.add_subcommand("complete", "Print what may be typed next");
    command->group("");  // for the shells' scripts, not for the help
    command->add_option("WORD", *words, "What was typed")->required();
    return {command, [&app, words] {
                print(next_words(
                    app, [] { return YangModel(default_yang_dir()).rule_names(); }, *words));
                return kExitClean;
            }};
}
