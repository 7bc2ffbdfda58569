#include "commands/command_line.h"

#include <algorithm>
#include <filesystem>

#include "commands/defaults.h"
#include "errors/did_you_mean.h"
#include "errors/input_error.h"
#include "files/named_file.h"
#include "terminal/output.h"

namespace {

bool is_option(const std::string& argument) {
    return argument.size() > 1 && argument[0] == '-';
}

/// What is wrong with the first of `left`, arguments that `subcommand` does not take: an option
/// among them is mistyped, or a name behind "--" and other names.
std::string unexpected(const CLI::App& subcommand, const std::vector<std::string>& left) {
    std::vector<std::string> names;
    for (const CLI::Option* const known : subcommand.get_options()) {
        names.push_back(known->get_name());
    }
    const auto option = std::find_if(left.begin(), left.end(), is_option);
    const std::string name =
        option == left.end() ? std::string() : option->substr(0, option->find('='));
    if (name.empty() || std::count(names.begin(), names.end(), name) > 0) {
        const CLI::Option* const running = subcommand.get_option_no_throw("--running");
        const bool has_two = running != nullptr && running->empty();
        return subcommand.get_name() + ": unexpected argument \"" + left.front() + "\"" +
               (!name.empty() ? "; give -- before the first name"
                : has_two     ? "; give --running before the running configuration"
                              : "");
    }
    return subcommand.get_name() + " has no option " + name + did_you_mean(name, names);
}

}  // namespace

CLI::App* find_subcommand(CLI::App& app, const std::string& name) {
    std::vector<std::string> names;
    for (CLI::App* const subcommand : app.get_subcommands({})) {
        if (subcommand->get_name() == name) {
            return subcommand;
        }
        names.push_back(subcommand->get_name());
    }
    std::error_code error;
    const bool is_file = std::filesystem::exists(name, error);
    throw InputError("there is no command \"" + name + "\"" +
                     (is_file ? "; to check that file, run vrrp-valid check " + plain_name(name)
                              : did_you_mean(name, names) + "; run vrrp-valid --help"));
}

void parse_command_line(CLI::App& app, int argc, const char* const* argv) {
    std::vector<std::string> arguments(argv + std::min(argc, 1), argv + argc);
    if (!arguments.empty() && arguments.front() == "help") {
        arguments.erase(arguments.begin());
        arguments.emplace_back("--help");
    }
    CLI::App* subcommand = nullptr;
    if (!arguments.empty() && !is_option(arguments.front())) {
        subcommand = find_subcommand(app, arguments.front());
        set_defaults(app, *subcommand);
    }
    if (arguments.empty()) {
        print(app.help());
    }
    std::reverse(arguments.begin(), arguments.end());  // as the parser wants them
    try {
        app.parse(std::move(arguments));
    } catch (const CLI::Success&) {
        throw;
    } catch (const CLI::ParseError& error) {
        if (subcommand == nullptr) {
            throw InputError("give a command, and then its options; run vrrp-valid --help");
        }
        const std::vector<std::string> left = app.remaining(true);
        throw InputError(
            (left.empty() ? std::string(error.what()) : unexpected(*subcommand, left)) +
            "; run vrrp-valid " + subcommand->get_name() + " --help");
    }
}
