#include "completion/completion.h"

namespace {

/// How fish is told what can be typed.
std::string source(const Completion& completion) {
    switch (completion.kind) {
        case Completion::Kind::files:
            return " -r -F";
        case Completion::Kind::folders:
            return " -x -a '(__fish_complete_directories)'";
        case Completion::Kind::rules:
            return " -x -a '(vrrp-valid rules 2>/dev/null | string split -f 3 \" \")'";
        case Completion::Kind::words:
            return " -x -a '" + CLI::detail::join(completion.words, " ") + "'";
        default:
            return completion.kind == Completion::Kind::nothing ? "" : " -x";
    }
}

std::string line(const std::string& condition, const std::string& rest,
                 const std::string& description) {
    return "complete -c vrrp-valid -n '" + condition + "'" + rest + " -d " +
           quoted(description, "\\'") + "\n";
}

}  // namespace

std::string fish_completion(const CLI::App& app) {
    const std::string commands = CLI::detail::join(subcommand_names(app), " ");
    const std::string no_command = "not __fish_seen_subcommand_from " + commands;
    std::string script =
        "# Completion of vrrp-valid in fish, made by vrrp-valid completion fish.\n"
        "complete -c vrrp-valid -f\n" +
        line(no_command, " -l help", "Print the help") +
        line(no_command, " -l version", "Print the version");
    for (const CLI::App* const subcommand : subcommands_of(app)) {
        script += line(no_command, " -a " + subcommand->get_name(), subcommand->get_description());
        const std::string condition = "__fish_seen_subcommand_from " + subcommand->get_name();
        for (const CLI::Option* const option : subcommand->get_options()) {
            std::string names;
            for (const std::string& name : option_names(*option)) {
                names += name[1] == '-' ? " -l " + name.substr(2) : " -s " + name.substr(1);
            }
            script += line(condition, names + source(completion_of(app, *option)),
                           option->get_description());
        }
    }
    return script;
}
