#include "completion/completion.h"

#include <map>

Completion completion_of(const CLI::App& app, const CLI::Option& option) {
    if (option.get_items_expected_max() == 0) {
        return {Completion::Kind::nothing};
    }
    const std::string type = option.get_type_name();
    const std::size_t open = type.find('{');
    if (open != std::string::npos && type.find("->") == std::string::npos) {
        return {Completion::Kind::words,
                CLI::detail::split(type.substr(open + 1, type.find('}') - open - 1), ',')};
    }
    if (type == "COMMAND") {
        return {Completion::Kind::words, subcommand_names(app)};
    }
    const std::map<std::string, Completion::Kind> kinds = {{"FILE", Completion::Kind::files},
                                                           {"DIR", Completion::Kind::folders},
                                                           {"RULE", Completion::Kind::rules}};
    const auto kind = kinds.find(type);
    return {kind == kinds.end() ? Completion::Kind::text : kind->second};
}

std::vector<std::string> option_names(const CLI::Option& option) {
    std::vector<std::string> names;
    for (const std::string& name : option.get_snames()) {
        names.push_back("-" + name);
    }
    for (const std::string& name : option.get_lnames()) {
        names.push_back("--" + name);
    }
    return names;
}

std::string quoted(const std::string& text, const std::string& quote) {
    return "'" + CLI::detail::find_and_replace(text, "'", quote) + "'";
}

std::vector<const CLI::App*> subcommands_of(const CLI::App& app) {
    return app.get_subcommands([](const CLI::App*) { return true; });
}

std::vector<std::string> subcommand_names(const CLI::App& app) {
    std::vector<std::string> names;
    for (const CLI::App* const subcommand : subcommands_of(app)) {
        names.push_back(subcommand->get_name());
    }
    return names;
}
