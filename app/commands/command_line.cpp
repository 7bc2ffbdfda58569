#include "commands/command_line.h"

#include <algorithm>

#include "commands/defaults.h"
#include "errors/did_you_mean.h"
#include "errors/input_error.h"

namespace {

bool is_option(const std::string& argument) {
    return argument.size() > 1 && argument[0] == '-';
}

/// Whether a value follows `argument`. An option means the same in every subcommand that has it.
bool takes_next(CLI::App& app, const std::string& argument) {
    for (const CLI::App* const subcommand : all_subcommands(app)) {
        if (const CLI::Option* const option = subcommand->get_option_no_throw(argument)) {
            return option->get_items_expected_min() > 0;
        }
    }
    return false;
}

/// The arguments that nothing takes; an option among them is mistyped.
std::string unexpected(CLI::App& app, const std::string& subcommand) {
    const std::vector<std::string> left = app.remaining(true);
    const auto option = std::find_if(left.begin(), left.end(), is_option);
    if (option == left.end()) {
        return subcommand + ": unexpected argument \"" + left.front() + "\"";
    }
    std::vector<std::string> names;
    for (const CLI::Option* const known : app.get_subcommand(subcommand)->get_options()) {
        for (const std::string& name : known->get_lnames()) {
            names.push_back("--" + name);
        }
    }
    const std::string name = option->substr(0, option->find('='));
    return subcommand + " has no option " + name + did_you_mean(name, names);
}

/// What is wrong, in fewer numbers than the parser says it.
std::string reason_of(const CLI::ParseError& error) {
    std::string text = error.what();
    if (dynamic_cast<const CLI::ArgumentMismatch*>(&error) == nullptr) {
        return text;
    }
    const bool lacks_value = text.find(" missing") != std::string::npos;
    return text.substr(0, text.find(':')) +
           (lacks_value ? " needs a value" : " is given more than once");
}

}  // namespace

std::vector<CLI::App*> all_subcommands(CLI::App& app) {
    return app.get_subcommands([](const CLI::App*) { return true; });
}

CLI::App* find_subcommand(CLI::App& app, const std::string& name) {
    std::vector<std::string> names;
    for (CLI::App* const subcommand : all_subcommands(app)) {
        if (subcommand->get_name() == name) {
            return subcommand;
        }
        names.push_back(subcommand->get_name());
    }
    throw InputError("there is no command \"" + name + "\"" + did_you_mean(name, names) +
                     "; run vrrp-valid --help");
}

std::vector<std::string> subcommand_first(CLI::App& app, std::vector<std::string> arguments) {
    for (std::size_t i = 0; i < arguments.size(); ++i) {
        if (!is_option(arguments[i])) {
            const auto subcommand = arguments.begin() + static_cast<std::ptrdiff_t>(i);
            std::rotate(arguments.begin(), subcommand, subcommand + 1);
            break;
        }
        i += takes_next(app, arguments[i]) ? 1 : 0;
    }
    return arguments;
}

void parse_command_line(CLI::App& app, std::vector<std::string> arguments) {
    std::string name;
    if (!arguments.empty() && !is_option(arguments.front())) {
        name = arguments.front();
        set_defaults(app, *find_subcommand(app, name));
    }
    std::reverse(arguments.begin(), arguments.end());  // as the parser wants them
    try {
        app.parse(arguments);
    } catch (const CLI::Success&) {
        throw;
    } catch (const CLI::ParseError& error) {
        const bool is_extra = dynamic_cast<const CLI::ExtrasError*>(&error) != nullptr;
        throw InputError((is_extra && !name.empty() ? unexpected(app, name) : reason_of(error)) +
                         std::string("; run vrrp-valid ") + name + (name.empty() ? "" : " ") +
                         "--help");
    }
}
