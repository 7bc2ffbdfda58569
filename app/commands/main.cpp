#include <CLI/CLI.hpp>
#include <iostream>

#include "commands/commands.h"
#include "commands/exit_code.h"
#include "commands/install_layout.h"
#include "terminal/output.h"

namespace {

struct Arguments {
    CheckOptions check;
    std::string file;
    std::string selector;
    bool markdown = false;
};

void add_yang_dir(CLI::App& command, Arguments& arguments) {
    command
        .add_option("--yang-dir", arguments.check.checker.yang_dir, "The folder of YANG modules")
        ->type_name("DIR");
}

CLI::Option* add_running(CLI::App& command, Arguments& arguments, const std::string& description) {
    return command.add_option("--running", arguments.check.running, description)->type_name("FILE");
}

CLI::Option* add_candidates(CLI::App& command, Arguments& arguments) {
    return command
        .add_option("CANDIDATE", arguments.check.candidates,
                    "A configuration in RFC 7951 JSON or NETCONF XML; - is standard input")
        ->required()
        ->type_name("FILE");
}

void add_check_options(CLI::App& command, Arguments& arguments) {
    CheckOptions& options = arguments.check;
    command.add_option("--format", options.format, "How to print the findings")
        ->check(CLI::IsMember({"text", "json", "junit"}))
        ->capture_default_str();
    command.add_option("--key-file", options.checker.key_file, "The key of encrypted passwords")
        ->type_name("FILE");
    command.add_option("--plugin", options.checker.plugin_file, "The plug-in that checks")
        ->type_name("FILE");
    command.add_flag("--accept-warnings", options.accept_warnings, "Warnings do not count");
    command.add_flag("-q,--quiet", options.quiet, "Print no findings: the exit code tells");
    add_yang_dir(command, arguments);
}

/// A subcommand with an example at the end of its help.
CLI::App* add_command(CLI::App& app, const char* name, const char* description,
                      const std::string& example) {
    CLI::App* const command = app.add_subcommand(name, description);
    command->footer("Example: vrrp-valid " + std::string(name) + " " + example);
    return command;
}

int run(int argc, char** argv) {
    Arguments arguments;
    arguments.check.checker.plugin_file = default_plugin_file();
    arguments.check.checker.yang_dir = default_yang_dir();

    CLI::App app("Checks VRRP configuration before it is committed.", "vrrp-valid");
    app.require_subcommand(1);
    app.failure_message([](const CLI::App*, const CLI::Error& error) {
        return complaint(error.what() + std::string("; run vrrp-valid --help"));
    });
    app.set_version_flag("--version", "vrrp-valid " VRRP_VALID_VERSION);
    app.footer(
        "Exit codes: 0 nothing found, 1 errors, 2 could not check, 3 warnings only.\n"
        "Example: vrrp-valid check --running running.json candidate.json");

    CLI::App* const check =
        add_command(app, "check", "Check configurations", "--running running.json candidate.json");
    add_running(*check, arguments, "The running configuration; empty without it");
    add_check_options(*check, arguments);
    check
        ->add_option("--rule", arguments.check.checker.selectors,
                     "Run this rule only; can be given again")
        ->type_name("SELECTOR")
        ->allow_extra_args(false);
    check->add_flag("--diff", arguments.check.checker.difference,
                    "Print first what the candidate changes");
    add_candidates(*check, arguments);

    CLI::App* const diff = add_command(app, "diff", "Print what a configuration changes",
                                       "--running running.json candidate.json");
    add_running(*diff, arguments, "The running configuration")->required();
    diff->add_option("--format", arguments.check.format, "How to print the changes")
        ->check(CLI::IsMember({"text", "json"}))
        ->capture_default_str();
    add_yang_dir(*diff, arguments);
    add_candidates(*diff, arguments)->expected(1);

    CLI::App* const commit =
        add_command(app, "commit", "Check a configuration and make it the running one",
                    "--running running.json candidate.json");
    add_running(*commit, arguments, "The running configuration, to be replaced")->required();
    add_check_options(*commit, arguments);
    add_candidates(*commit, arguments)->expected(1);

    CLI::App* const rules =
        add_command(app, "rules", "List where the model asks for a rule", "--yang-dir yang");
    add_yang_dir(*rules, arguments);

    CLI::App* const explain = add_command(app, "explain", "Tell what a rule demands and what to do",
                                          "vrrp_vrf_validation");
    explain->add_option("SELECTOR", arguments.selector, "The rule; every one without it");
    explain->add_flag("--markdown", arguments.markdown, "As Markdown");
    add_yang_dir(*explain, arguments);

    CLI::App* const keygen =
        add_command(app, "keygen", "Make a key for encrypted passwords", "router.key");
    keygen->add_option("FILE", arguments.file, "The key file to make")->required();

    CLI::App* const encrypt =
        add_command(app, "encrypt", "Encrypt a password from the terminal or standard input",
                    "--key-file router.key");
    encrypt->add_option("--key-file", arguments.file, "The key file")
        ->type_name("FILE")
        ->required();

    try {
        app.parse(argc, argv);
    } catch (const CLI::ParseError& error) {
        return app.exit(error) == 0 ? kExitClean : kExitCannotCheck;
    }
    const std::string& yang_dir = arguments.check.checker.yang_dir;
    if (check->parsed()) {
        return run_check(arguments.check);
    }
    if (diff->parsed()) {
        return run_diff(arguments.check);
    }
    if (commit->parsed()) {
        return run_commit(arguments.check);
    }
    if (rules->parsed()) {
        return run_rules(yang_dir);
    }
    if (explain->parsed()) {
        return run_explain(yang_dir, arguments.selector, arguments.markdown);
    }
    return keygen->parsed() ? run_keygen(arguments.file) : run_encrypt(arguments.file);
}

}  // namespace

int main(int argc, char** argv) {
    try {
        return run(argc, argv);
    } catch (const std::exception& error) {
        std::cerr << complaint(error.what());
        return kExitCannotCheck;
    }
}
