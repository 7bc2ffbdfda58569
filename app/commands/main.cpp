#include <algorithm>
#include <csignal>
#include <iostream>
#include <optional>
#include <set>

#include "commands/command_line.h"
#include "commands/commands.h"
#include "commands/defaults.h"
#include "commands/exit_code.h"
#include "commands/output_conflict.h"
#include "errors/input_error.h"
#include "terminal/interrupt.h"
#include "terminal/output.h"
#include "terminal/output_file.h"

namespace {

/// An empty name is a variable that is not set: it must not pass for an option that was not given.
void require_names(CLI::App& app) {
    const CLI::Validator is_named(
        [](const std::string& name) {
            return name.empty() ? std::string("the name is empty") : std::string();
        },
        {});
    for (CLI::App* const command : app.get_subcommands({})) {
        for (CLI::Option* const option : command->get_options()) {
            const std::string type = option->get_type_name();
            if (type.rfind("FILE", 0) == 0 || type.rfind("DIR", 0) == 0) {
                option->check(is_named);
            }
        }
    }
}

/// `--output`, of whatever subcommand prints something.
void add_output(CLI::App& app, std::string& file) {
    const std::set<std::string> without_output = {"keygen", "help"};
    for (CLI::App* const command : all_subcommands(app)) {
        if (without_output.count(command->get_name()) == 0) {
            command
                ->add_option("-o,--output", file,
                             "Write the output to this file, complete or not at all")
                ->type_name("FILE");
        }
    }
}

constexpr std::pair<const char*, Subcommand (*)(CLI::App&)> kSubcommands[] = {
    {"check", add_check_command},     {"diff", add_diff_command},
    {"report", add_report_command},   {"rules", add_rules_command},
    {"explain", add_explain_command}, {"keygen", add_keygen_command},
    {"encrypt", add_encrypt_command}, {"completion", add_completion_command},
    {"help", add_help_command},
};

/// Adds the subcommand `first`, or all of them when that is none, or one that needs to know the
/// others. To add all takes longer than many a check.
std::vector<Subcommand> add_subcommands(CLI::App& app, const std::string& first) {
    const bool needs_all = first == "completion" || first == "help" || has_defaults_file();
    for (const auto& [name, add] : kSubcommands) {
        if (name == first && !needs_all) {
            return {add(app)};
        }
    }
    std::vector<Subcommand> all;
    for (const auto& [name, add] : kSubcommands) {
        all.push_back(add(app));
    }
    return all;
}

/// Runs `subcommand`, whose output goes to the file `output`, and gives its exit code.
int run_into_file(const Subcommand& subcommand, const std::string& output) {
    require_no_input(*subcommand.parser, output);
    OutputFile file(output);
    const int code = subcommand.run();
    try {
        file.put_in_place();
    } catch (const InputError& error) {
        throw InputError(error.what() +
                         std::string("; without that the exit code would have been ") +
                         std::to_string(code));
    }
    return code;
}

int run_with_output(const Subcommand& subcommand, const std::string& output) {
    const bool is_file = !output.empty() && output != "-";
    try {
        return is_file ? run_into_file(subcommand, output) : subcommand.run();
    } catch (const OutputError& error) {
        throw InputError((is_file ? output : "standard output") +
                         " cannot be written: " + error.code().message());
    }
}

int run(int argc, char** argv) {
    CLI::App app("Checks VRRP configuration before it is committed.", "vrrp-valid");
    app.require_subcommand(1);
    app.set_version_flag("--version", "vrrp-valid " VRRP_VALID_VERSION);
    app.footer(
        "Exit codes: 0 nothing found, 1 errors, 2 could not be checked, 3 warnings only.\n"
        "Example: vrrp-valid check --running running.json candidate.json");
    const std::vector<Subcommand> subcommands = add_subcommands(app, argc > 1 ? argv[1] : "");
    std::string output;
    add_output(app, output);
    require_names(app);
    try {
        parse_command_line(app, subcommand_first(app, {argv + 1, argv + argc}));
    } catch (const CLI::Success& question) {
        return app.exit(question);
    }
    const auto given = std::find_if(subcommands.begin(), subcommands.end(),
                                    [](const Subcommand& one) { return one.parser->parsed(); });
    const int code = run_with_output(*given, output);
    if (code == kInterrupted) {
        Interrupt::pass_on();
    }
    return code;
}

}  // namespace

int main(int argc, char** argv) {
    // A reader that went away and a file size limit are failed writes, which are told.
    static_cast<void>(std::signal(SIGPIPE, SIG_IGN));
    static_cast<void>(std::signal(SIGXFSZ, SIG_IGN));
    try {
        return run(argc, argv);
    } catch (const std::exception& error) {
        std::cerr << complaint(error.what());
        return kExitCannotCheck;
    }
}
