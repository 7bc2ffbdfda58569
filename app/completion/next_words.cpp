#include "completion/next_words.h"

#include <algorithm>

namespace {

std::string lines_of(const std::vector<std::string>& words, const std::string& meaning) {
    std::string lines;
    for (const std::string& word : words) {
        lines.append(word).append("\t").append(meaning).append("\n");
    }
    return lines;
}

std::string subcommands(const CLI::App& app) {
    std::string lines;
    for (const CLI::App* const command :
         app.get_subcommands([](auto* one) { return !one->get_group().empty(); })) {
        lines += lines_of({command->get_name()}, command->get_description());
    }
    return lines;
}

std::string options(const CLI::App& command) {
    std::string lines;
    for (const CLI::Option* const option : command.get_options()) {
        for (const std::string& name : option->get_lnames()) {
            lines += lines_of({"--" + name}, option->get_description());
        }
    }
    return lines;
}

/// What `option` takes, each behind `prefix`.
std::string values(const CLI::App& app, const CLI::Option& option, const RuleNames& rule_names,
                   const std::string& prefix) {
    const std::string type = option.get_type_name();
    if (type == "COMMAND") {
        return subcommands(app);
    }
    std::vector<std::string> words;
    const std::size_t open = type.find('{');
    if (type == "RULE") {
        words = rule_names();
    } else if (open != std::string::npos && type.find("->") == std::string::npos) {
        words = CLI::detail::split(type.substr(open + 1, type.find('}') - open - 1), ',');
    }
    for (std::string& word : words) {
        word.insert(0, prefix);
    }
    return lines_of(words, "");
}

}  // namespace

std::string next_words(const CLI::App& app, const RuleNames& rule_names,
                       std::vector<std::string> words) {
    // bash takes --format=json for three words.
    const std::string current = words.back() == "=" ? "" : words.back();
    words.pop_back();
    words.erase(std::remove(words.begin(), words.end(), "="), words.end());
    if (words.empty()) {
        return subcommands(app) + options(app);
    }
    const std::vector<const CLI::App*> commands =
        app.get_subcommands([&](const CLI::App* one) { return one->get_name() == words.front(); });
    if (commands.empty()) {
        return {};
    }
    const CLI::App* const command = commands.front();
    const std::size_t equals = current.find('=');
    const bool has_equals = current[0] == '-' && equals != std::string::npos;
    const CLI::Option* const option =
        command->get_option_no_throw(has_equals ? current.substr(0, equals) : words.back());
    if (option != nullptr && option->get_items_expected_max() > 0) {
        return values(app, *option, rule_names, has_equals ? current.substr(0, equals + 1) : "");
    }
    if (current[0] == '-') {
        return options(*command);
    }
    for (const CLI::Option* const argument : command->get_options()) {
        if (argument->get_positional()) {
            return values(app, *argument, rule_names, "");
        }
    }
    return {};
}
