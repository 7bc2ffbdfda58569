#include "commands/defaults.h"

#include <algorithm>
#include <cstdlib>
#include <filesystem>

#include "commands/command_line.h"
#include "errors/did_you_mean.h"
#include "errors/input_error.h"

namespace fs = std::filesystem;

namespace {

constexpr const char* kFile = ".vrrp-valid.toml";

/// A file that lies in a folder by chance, or by somebody's intent, must not run code write files
/// or leave out rules.
const std::vector<std::string> kNotInFile = {"output", "plugin", "rule"};

/// The option's name in a file; empty when it has no defaults but its own.
std::string key_of(const CLI::Option& option) {
    return option.get_configurable() && !option.get_lnames().empty() ? option.get_lnames().front()
                                                                     : std::string();
}

CLI::Option* find_option(const CLI::App& subcommand, const std::string& key) {
    for (CLI::Option* const option : const_cast<CLI::App&>(subcommand).get_options()) {
        if (!key.empty() && key_of(*option) == key) {
            return option;
        }
    }
    return nullptr;
}

/// "VRRP_VALID_MAX_WARNINGS" for "max-warnings".
std::string variable_of(const std::string& key) {
    std::string name = "VRRP_VALID_" + key;
    std::transform(name.begin(), name.end(), name.begin(),
                   [](unsigned char c) { return c == '-' ? '_' : std::toupper(c); });
    return name;
}

void set_default(CLI::Option& option, const std::string& value, const std::string& source) {
    try {
        option.run_callback_for_default()->default_val(value)->required(false);
    } catch (const CLI::Error& error) {
        throw InputError(source + ": " + error.what());
    }
}

std::vector<CLI::ConfigItem> read_file() {
    const fs::file_status status = fs::status(kFile);
    if (!fs::exists(status)) {
        return {};
    }
    try {
        if (!fs::is_regular_file(status)) {
            throw CLI::FileError("not a regular file");
        }
        return CLI::ConfigTOML().from_file(kFile);
    } catch (const CLI::Error& error) {
        throw InputError(kFile + std::string(": ") + error.what());
    }
}

/// The subcommands that `item` speaks to.
std::vector<CLI::App*> addressed(CLI::App& app, const CLI::ConfigItem& item) {
    std::vector<CLI::App*> subcommands = all_subcommands(app);
    if (item.parents.empty()) {
        return subcommands;
    }
    std::vector<std::string> names;
    names.reserve(subcommands.size());
    for (const CLI::App* const subcommand : subcommands) {
        names.push_back(subcommand->get_name());
    }
    const auto found = std::find(names.begin(), names.end(), item.parents.front());
    if (found == names.end() || item.parents.size() > 1) {
        const std::string section = CLI::detail::join(item.parents, ".");
        throw InputError(std::string(kFile) + ": there is no command for [" + section + "]" +
                         did_you_mean(section, names));
    }
    return {subcommands[static_cast<std::size_t>(found - names.begin())]};
}

void require_known(const CLI::ConfigItem& item, const std::vector<CLI::App*>& subcommands) {
    const std::string at = std::string(kFile) + ": \"" + item.fullname() + "\" ";
    if (std::count(kNotInFile.begin(), kNotInFile.end(), item.name) > 0) {
        throw InputError(at + "cannot be set in a file; give --" + item.name +
                         " on the command line");
    }
    std::vector<std::string> keys;
    for (const CLI::App* const subcommand : subcommands) {
        for (const CLI::Option* const option : subcommand->get_options()) {
            keys.push_back(key_of(*option));
        }
    }
    if (item.name.empty() || std::count(keys.begin(), keys.end(), item.name) == 0) {
        throw InputError(at + "is not an option" + did_you_mean(item.name, keys));
    }
    if (item.inputs.size() != 1) {
        throw InputError(at + "needs exactly one value");
    }
}

}  // namespace

bool has_defaults_file() {
    std::error_code error;
    return fs::exists(kFile, error);
}

void set_defaults(CLI::App& app, CLI::App& subcommand) {
    std::vector<CLI::ConfigItem> items = read_file();
    // A section's key holds before one for all.
    std::stable_sort(items.begin(), items.end(), [](const auto& left, const auto& right) {
        return left.parents.size() < right.parents.size();
    });
    for (const CLI::ConfigItem& item : items) {
        const std::vector<CLI::App*> subcommands = addressed(app, item);
        if (item.name == "++" || item.name == "--") {
            continue;  // the parser's marks for the ends of a section
        }
        require_known(item, subcommands);
        CLI::Option* const option = find_option(subcommand, item.name);
        if (option != nullptr &&
            std::count(subcommands.begin(), subcommands.end(), &subcommand) > 0) {
            set_default(*option, item.inputs.front(), kFile + (": \"" + item.fullname() + "\""));
        }
    }
    for (CLI::Option* const option : subcommand.get_options()) {
        const std::string variable = variable_of(key_of(*option));
        const char* const value = std::getenv(variable.c_str());
        if (value != nullptr && *value != '\0') {
            set_default(*option, value, variable);
        }
    }
}
