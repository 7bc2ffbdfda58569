#include "completion/completion.h"

namespace {

/// `text` where brackets and colons would end it.
std::string escaped(std::string text) {
    for (const char* const mark : {"\\", "[", "]", ":"}) {
        text = CLI::detail::find_and_replace(text, mark, std::string("\\") + mark);
    }
    return text;
}

/// What a value is called, and what completes it.
std::string action(const Completion& completion) {
    switch (completion.kind) {
        case Completion::Kind::nothing:
            return "";
        case Completion::Kind::files:
            return ":file:_files";
        case Completion::Kind::folders:
            return ":folder:_files -/";
        case Completion::Kind::rules:
            return ":rule:_vrrp_valid_rules";
        case Completion::Kind::words:
            return ":value:(" + CLI::detail::join(completion.words, " ") + ")";
        default:
            return ":value: ";
    }
}

std::string argument_line(const std::string& specification) {
    return " \\\n        " + quoted(specification, "'\\''");
}

/// The specifications of `option` for _arguments, one for each of its names.
std::string specifications(const CLI::App& app, const CLI::Option& option) {
    const std::vector<std::string> names = option_names(option);
    const Completion completion = completion_of(app, option);
    const bool is_repeated = option.get_expected_max() > 1;
    if (names.empty()) {
        return argument_line((is_repeated ? "*" : ":") + action(completion));
    }
    const std::string prefix = is_repeated ? "*" : "(" + CLI::detail::join(names, " ") + ")";
    const std::string description = "[" + escaped(option.get_description()) + "]";
    std::string lines;
    for (const std::string& name : names) {
        const std::string suffix = completion.kind == Completion::Kind::nothing ? ""
                                   : name[1] == '-'                             ? "="
                                                                                : "+";
        std::string specification = prefix;
        specification.append(name).append(suffix).append(description).append(action(completion));
        lines += argument_line(specification);
    }
    return lines;
}

}  // namespace

std::string zsh_completion(const CLI::App& app) {
    std::string commands;
    std::string branches;
    for (const CLI::App* const subcommand : subcommands_of(app)) {
        const std::string& name = subcommand->get_name();
        commands += argument_line(name + ":" + escaped(subcommand->get_description()));
        branches += "    " + name + ")\n      _arguments";
        for (const CLI::Option* const option : subcommand->get_options()) {
            branches += specifications(app, *option);
        }
        branches += "\n      ;;\n";
    }
    return "#compdef vrrp-valid\n"
           "# Completion of vrrp-valid in zsh, made by vrrp-valid completion zsh.\n"
           "_vrrp_valid_rules() {\n"
           "  compadd -- ${(f)\"$(vrrp-valid rules 2>/dev/null | awk '{print $2}')\"}\n"
           "}\n\n"
           "_vrrp_valid() {\n"
           "  local state line\n"
           "  local -a commands=(" +
           commands +
           ")\n"
           "  _arguments -C '--help[Print the help]' '--version[Print the version]' \\\n"
           "    '1: :->command' '*:: :->argument'\n"
           "  if [[ $state == command ]]; then\n"
           "    _describe command commands\n"
           "    return\n"
           "  fi\n"
           "  case $words[1] in\n" +
           branches +
           "  esac\n"
           "}\n\n"
           "# The completion system runs the file in the function's place at first.\n"
           "if [[ $funcstack[1] == _vrrp-valid ]]; then _vrrp_valid \"$@\"\n"
           "else compdef _vrrp_valid vrrp-valid; fi\n";
}
