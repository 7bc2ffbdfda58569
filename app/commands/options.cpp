#include "commands/options.h"

#include <algorithm>
#include <charconv>
#include <thread>

#include "commands/install_layout.h"
#include "errors/input_error.h"

CLI::App* add_subcommand(CLI::App& app, const std::string& name, const std::string& description,
                         const std::string& example) {
    CLI::App* const command = app.add_subcommand(name, description);
    command->footer("Example: vrrp-valid " + name + " " + example);
    return command;
}

CLI::Validator whole_number(std::size_t least) {
    return {[least](const std::string& text) {
                std::size_t number = 0;
                const char* const end = text.data() + text.size();
                const auto read = std::from_chars(text.data(), end, number);
                const bool is_good = read.ec == std::errc() && read.ptr == end && number >= least;
                return is_good ? std::string()
                               : "\"" + text + "\" is not a whole number of " +
                                     std::to_string(least) + " or more";
            },
            ""};
}

void add_yang_dir(CLI::App& command, std::string& yang_dir) {
    yang_dir = default_yang_dir();
    command.add_option("--yang-dir", yang_dir, "The folder with the YANG modules")
        ->type_name("DIR");
}

CLI::Option* add_running(CLI::App& command, std::string& running, const std::string& description) {
    return command.add_option("--running", running, description)->type_name("FILE");
}

CLI::Option* add_candidates(CLI::App& command, std::vector<std::string>& candidates) {
    return command
        .add_option("CANDIDATE", candidates,
                    "A configuration in RFC 7951 JSON or NETCONF XML; - is standard input")
        ->required()
        ->type_name("FILE");
}

void add_max_size(CLI::App& command, std::size_t& max_size) {
    command.add_option("--max-size", max_size, "Refuse larger files; with a unit, as in 100MB")
        ->transform(CLI::AsSizeValue(false))
        ->type_name("SIZE")
        ->capture_default_str();
}

void add_colour(CLI::App& command, std::string& when) {
    command.add_option("--color", when, "When to colour the text")
        ->check(CLI::IsMember({"auto", "always", "never"}))
        ->capture_default_str();
}

void add_report_options(CLI::App& command, ReportOptions& options, std::size_t& max_warnings) {
    command.add_option("--format", options.format, "How to print the findings")
        ->check(CLI::IsMember(report_formats()))
        ->capture_default_str();
    command.add_flag("--accept-warnings", options.accept_warnings,
                     "Accept warnings: they do not change the exit code");
    command
        .add_option("--max-warnings", max_warnings,
                    "Accept this many warnings, counted over all candidates")
        ->check(whole_number(0))
        ->type_name("NUMBER")
        ->capture_default_str();
    add_colour(command, options.colour);
    command.add_flag("-q,--quiet", options.quiet, "Print findings only");
    command.add_flag("--silent", options.silent, "Print no report, only set the exit code");
}

void add_reading_options(CLI::App& command, CheckerOptions& options) {
    command.add_flag(
        "--edit", options.is_edit,
        "Candidates are edits of the running configuration: an edit-config, or JSON to merge");
    command.add_flag("--ignore-unknown", options.ignore_unknown,
                     "Skip nodes that the YANG modules do not define, and list them");
}

void add_check_options(CLI::App& command, CheckOptions& options) {
    options.checker.plugin_file = default_plugin_file();
    options.checker.threads = std::max(1U, std::thread::hardware_concurrency());
    add_report_options(command, options.report, options.max_warnings);
    command.add_option("--key-file", options.checker.key_file, "The key of encrypted passwords")
        ->type_name("FILE");
    command.add_option("--plugin", options.checker.plugin_file, "The plug-in with the rules")
        ->type_name("FILE");
    command
        .add_option("--max-findings", options.checker.max_findings,
                    "Print at most this many findings of each rule, and count the rest")
        ->check(whole_number(0))
        ->type_name("NUMBER")
        ->capture_default_str();
    command
        .add_option("-j,--jobs", options.checker.threads,
                    "Number of threads; as many as there are cores unless given")
        ->check(whole_number(1))
        ->type_name("NUMBER");
    add_reading_options(command, options.checker);
    add_max_size(command, options.max_size);
    add_yang_dir(command, options.checker.yang_dir);
}

void require_one_standard_input(const std::vector<std::string>& files) {
    if (std::count(files.begin(), files.end(), "-") > 1) {
        throw InputError("standard input can be read only once: give \"-\" once");
    }
}
