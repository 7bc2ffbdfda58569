#include "commands/defaults.h"

#include <unistd.h>

#include <algorithm>
#include <cctype>
#include <filesystem>
#include <iostream>
#include <string_view>

#include "commands/command_line.h"
#include "errors/did_you_mean.h"
#include "errors/input_error.h"
#include "terminal/output.h"

namespace fs = std::filesystem;

namespace {

constexpr const char* kFile = ".vrrp-valid.toml";
const std::string kVariable = "VRRP_VALID_";

/// A file that lies in a folder by chance, or by somebody's intent, must not run code, read what is
/// no configuration, write files, leave out rules or data, or hide findings. It sets what is safe.
constexpr std::string_view kInFile =
    " accept-warnings allow-missing-running color diff edit format jobs max-findings max-size "
    "quiet running ";

/// `text` with `from` as `to`, and each letter as `letter` makes it.
std::string respelled(std::string text, char from, char to, int (*letter)(int)) {
    std::transform(text.begin(), text.end(), text.begin(), [&](char c) {
        return c == from ? to : static_cast<char>(letter(static_cast<unsigned char>(c)));
    });
    return text;
}

/// Throws InputError unless one of `subcommands` has the option `item`, and it may be set there.
void require_option(const std::vector<CLI::App*>& subcommands, const CLI::ConfigItem& item,
                    bool is_in_file) {
    std::vector<std::string> names;
    for (const CLI::App* const subcommand : subcommands) {
        for (const CLI::Option* const option : subcommand->get_options()) {
            if (option->get_configurable() && !option->get_lnames().empty()) {
                names.push_back(option->get_lnames().front());
            }
        }
    }
    if (std::count(names.begin(), names.end(), item.name) == 0) {
        throw InputError("there is no such option" + did_you_mean(item.name, names));
    }
    if (is_in_file && kInFile.find(" " + item.name + " ") == std::string_view::npos) {
        throw InputError("cannot be set in a file; give --" + item.name + ", or set " + kVariable +
                         respelled(item.name, '-', '_', std::toupper));
    }
    if (item.inputs.size() != 1) {
        throw InputError("needs exactly one value");
    }
}

/// Gives `subcommand` the default `item` of `source`, as messages call it, in `file`, empty for
/// none; returns false when it is for others.
bool apply(CLI::App& app, CLI::App& subcommand, const CLI::ConfigItem& item,
           const std::string& source, const fs::path& file) {
    try {
        const std::vector<CLI::App*> sections =
            item.parents.empty()
                ? app.get_subcommands({})
                : std::vector{find_subcommand(app, CLI::detail::join(item.parents, "."))};
        require_option(sections, item, !file.empty());
        CLI::Option* const option = subcommand.get_option_no_throw("--" + item.name);
        if (std::count(sections.begin(), sections.end(), &subcommand) == 0 || option == nullptr ||
            !option->get_configurable()) {
            return false;
        }
        const std::string& value = item.inputs.front();
        const bool is_name = option->get_type_name() == "FILE" && value != "-";
        option->run_callback_for_default()
            ->default_val(is_name ? (file.parent_path() / value).string() : value)
            ->required(false);
        return true;
    } catch (const std::runtime_error& error) {
        throw InputError(source + ": " + error.what());
    }
}

/// The defaults file that holds in the working folder; empty without one.
fs::path find_file() {
    std::error_code error;
    fs::path found;
    fs::path folder;
    for (fs::path place = fs::current_path(error); !error; place = place.parent_path()) {
        if (found.empty() && fs::exists(folder / kFile, error)) {
            found = folder / kFile;
        }
        if (fs::exists(folder / ".git", error)) {
            return found;
        }
        if (!place.has_relative_path()) {
            break;
        }
        folder /= "..";
    }
    return fs::exists(kFile, error) ? kFile : fs::path();
}

/// What `file` sets, nothing without one; what comes later holds.
std::vector<CLI::ConfigItem> read_file(const fs::path& file) {
    if (file.empty()) {
        return {};
    }
    if (!fs::is_regular_file(file)) {
        throw InputError(file.string() + ": not a regular file");
    }
    std::vector<CLI::ConfigItem> items = CLI::ConfigTOML().from_file(file.string());
    std::stable_sort(items.begin(), items.end(), [](const auto& left, const auto& right) {
        return left.parents.size() < right.parents.size();
    });
    return items;
}

}  // namespace

void set_defaults(CLI::App& app, CLI::App& subcommand) {
    const fs::path file = find_file();
    bool is_used = false;
    for (const CLI::ConfigItem& item : read_file(file)) {
        const bool is_mark = item.name == "++" || item.name == "--";  // of a section's ends
        is_used |= !is_mark && apply(app, subcommand, item,
                                     file.string() + ": \"" + item.fullname() + "\"", file);
    }
    if (is_used) {
        std::cerr << complaint("options are set in " + file.string());
    }
    for (const char* const* variable = environ; *variable != nullptr; ++variable) {
        const std::string text = *variable;
        const std::size_t end = text.find('=');
        if (text.rfind(kVariable, 0) == 0 && end + 1 < text.size()) {
            const std::string key = respelled(text.substr(kVariable.size(), end - kVariable.size()),
                                              '_', '-', std::tolower);
            apply(app, subcommand, {{}, key, {text.substr(end + 1)}}, text.substr(0, end), {});
        }
    }
}
