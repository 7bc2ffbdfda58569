#include "completion/completion.h"

namespace {

/// The command that prints what can be typed.
std::string generator(const Completion& completion) {
    switch (completion.kind) {
        case Completion::Kind::files:
            return "compgen -f -- \"$current\"";
        case Completion::Kind::folders:
            return "compgen -d -- \"$current\"";
        case Completion::Kind::rules:
            return "compgen -W \"$(vrrp-valid rules 2>/dev/null | awk '{print $2}')\" -- "
                   "\"$current\"";
        case Completion::Kind::words:
            return "compgen -W '" + CLI::detail::join(completion.words, " ") + "' -- \"$current\"";
        default:
            return ":";
    }
}

/// A branch of a case statement.
std::string branch(const std::string& pattern, const std::string& command) {
    return "    " + pattern + ") " + command + " ;;\n";
}

}  // namespace

std::string bash_completion(const CLI::App& app) {
    std::string values;
    std::string options;
    std::string arguments;
    for (const CLI::App* const subcommand : subcommands_of(app)) {
        const std::string& command = subcommand->get_name();
        const std::string before = "'" + command + " ";
        std::vector<std::string> names;
        for (const CLI::Option* const option : subcommand->get_options()) {
            const Completion completion = completion_of(app, *option);
            for (const std::string& name : option_names(*option)) {
                names.push_back(name);
                if (completion.kind != Completion::Kind::nothing) {
                    values += branch(before + name + "'", generator(completion) + "; return");
                }
            }
            if (option_names(*option).empty()) {
                arguments += branch(command, generator(completion));
            }
        }
        options += branch(command, generator({Completion::Kind::words, names}));
    }
    const std::string commands = CLI::detail::join(subcommand_names(app), " ");
    return "# Completion of vrrp-valid in bash, made by vrrp-valid completion bash.\n"
           "_vrrp_valid_words() {\n"
           "  local command='' word\n"
           "  for word in \"${COMP_WORDS[@]:1:COMP_CWORD-1}\"; do\n"
           "    case $word in " +
           CLI::detail::join(subcommand_names(app), "|") +
           ") command=$word; break ;; esac\n"
           "  done\n"
           "  case \"$command $previous\" in\n" +
           values +
           "  esac\n"
           "  case $command:$current in\n"
           "    :-*) compgen -W '--help --version' -- \"$current\"; return ;;\n"
           "    :*) compgen -W '" +
           commands +
           "' -- \"$current\"; return ;;\n"
           "  esac\n"
           "  if [[ $current == -* ]]; then\n"
           "    case $command in\n" +
           options +
           "    esac\n"
           "    return\n"
           "  fi\n"
           "  case $command in\n" +
           arguments +
           "  esac\n"
           "}\n\n"
           "_vrrp_valid() {\n"
           "  local current=${COMP_WORDS[COMP_CWORD]} previous=${COMP_WORDS[COMP_CWORD - 1]}\n"
           "  # The shell takes --format=json for three words.\n"
           "  if [ \"$current\" = = ]; then\n"
           "    current=''\n"
           "  elif [ \"$previous\" = = ]; then\n"
           "    previous=${COMP_WORDS[COMP_CWORD - 2]}\n"
           "  fi\n"
           "  mapfile -t COMPREPLY < <(_vrrp_valid_words)\n"
           "}\n\n"
           "complete -o filenames -F _vrrp_valid vrrp-valid\n";
}
