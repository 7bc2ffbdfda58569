#include <CLI/CLI.hpp>
#include <iostream>

#include "cannot_judge.h"
#include "commands.h"
#include "install_layout.h"
#include "local_platform.h"

namespace {

struct Arguments {
    JudgeOptions judge;
    std::string candidate;
    std::string key_file;
};

void add_judge_options(CLI::App& command, Arguments& arguments) {
    JudgeOptions& options = arguments.judge;
    command.add_option("--format", options.format, "How to print the findings")
        ->check(CLI::IsMember({"text", "json"}))
        ->capture_default_str();
    command.add_option("--key-file", options.key_file, "The key of encrypted passwords")
        ->type_name("FILE");
    command.add_option("--plugin", options.plugin_file, "The plug-in that judges")
        ->type_name("FILE");
    command.add_flag("--accept-warnings", options.accept_warnings, "Warnings do not count");
    command.add_option("CANDIDATE", arguments.candidate, "The configuration to judge, JSON or XML")
        ->required()
        ->type_name("FILE");
}

void add_yang_dir(CLI::App& command, Arguments& arguments) {
    command.add_option("--yang-dir", arguments.judge.yang_dir, "The folder of YANG modules")
        ->type_name("DIR");
}

int run(int argc, char** argv) {
    Arguments arguments;
    arguments.judge.plugin_file = default_plugin_file();
    arguments.judge.yang_dir = default_yang_dir();

    CLI::App app("Judges VRRP configuration before it is committed.", "vrrp-valid");
    app.require_subcommand(1);
    app.set_version_flag("--version", "vrrp-valid " VRRP_VALID_VERSION);

    CLI::App* const check = app.add_subcommand("check", "Judge a configuration");
    check->add_option("--running", arguments.judge.running, "The running configuration")
        ->type_name("FILE");
    add_judge_options(*check, arguments);
    add_yang_dir(*check, arguments);

    CLI::App* const commit =
        app.add_subcommand("commit", "Judge a configuration and make it the running one");
    commit->add_option("--running", arguments.judge.running, "The running configuration, replaced")
        ->type_name("FILE")
        ->required();
    add_judge_options(*commit, arguments);
    add_yang_dir(*commit, arguments);

    CLI::App* const rules = app.add_subcommand("rules", "List where the model asks for a rule");
    add_yang_dir(*rules, arguments);

    CLI::App* const keygen = app.add_subcommand("keygen", "Make a key for encrypted passwords");
    keygen->add_option("FILE", arguments.key_file, "The key file to make")->required();

    CLI::App* const encrypt =
        app.add_subcommand("encrypt", "Encrypt a password from the terminal or standard input");
    encrypt->add_option("--key-file", arguments.key_file, "The key file")
        ->type_name("FILE")
        ->required();

    try {
        app.parse(argc, argv);
    } catch (const CLI::ParseError& error) {
        return app.exit(error) == 0 ? kExitClean : kExitCannotJudge;
    }
    if (check->parsed()) {
        return run_check(arguments.judge, arguments.candidate);
    }
    if (commit->parsed()) {
        return run_commit(arguments.judge, arguments.candidate);
    }
    if (rules->parsed()) {
        return run_rules(arguments.judge.yang_dir);
    }
    if (keygen->parsed()) {
        return run_keygen(arguments.key_file);
    }
    return run_encrypt(arguments.key_file);
}

}  // namespace

int main(int argc, char** argv) {
    try {
        return run(argc, argv);
    } catch (const std::exception& error) {
        std::cerr << "vrrp-valid: " << error.what() << "\n";
        return kExitCannotJudge;
    }
}
