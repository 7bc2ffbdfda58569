#include "commands/options.h"

#include <algorithm>
#include <charconv>

#include "commands/exit_code.h"
#include "commands/install_layout.h"
#include "errors/input_error.h"
#include "files/named_file.h"

namespace {

/// Makes a number of what `--accept-warnings` is given: nothing, which is "true", accepts all.
std::string to_number_of_warnings(std::string& text) {
    if (text == "true" || text == "false") {
        text = std::to_string(text == "true" ? kAllWarnings : 0);
    }
    return whole_number(0)(text);
}

}  // namespace

CLI::App* add_subcommand(CLI::App& app, const std::string& name, const std::string& description,
                         const std::string& example) {
    CLI::App* const command = app.add_subcommand(name, description);
    command->footer("Example: vrrp-valid " + name + " " + example);
    return command;
}

CLI::Validator file_name() {
    return {[](std::string& name) {
                name = plain_name(name);
                return name.empty() ? std::string("the name is empty") : std::string();
            },
            ""};
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
    add_file(command, "--yang-dir", yang_dir, "The folder with the YANG modules")->type_name("DIR");
}

void add_report_options(CLI::App& command, ReportOptions& options, std::size_t& accepted_warnings) {
    command.add_option("--format", options.format, "How to print the findings")
        ->check(CLI::IsMember(report_formats()))
        ->capture_default_str();
    command
        .add_flag("--accept-warnings", accepted_warnings,
                  "Accept all warnings, or with =N up to N, counted over all candidates")
        ->multi_option_policy(CLI::MultiOptionPolicy::TakeLast)
        ->transform(CLI::Validator(to_number_of_warnings, ""));
    command.add_flag("-q,--quiet", options.quiet, "Print findings only");
    command.add_flag("--silent", options.silent, "Print no report, only set the exit code");
    add_colour(command, options.colour);
}

void add_reading_options(CLI::App& command, bool& is_edit, bool& ignore_unknown) {
    command.add_flag(
        "--edit", is_edit,
        "Candidates are edits of the running configuration: an edit-config, or JSON to merge");
    command.add_flag("--ignore-unknown", ignore_unknown,
                     "Skip nodes that the YANG modules do not define, and list them");
}

void add_max_size(CLI::App& command, std::size_t& max_size) {
    command
        .add_option("--max-size", max_size,
                    "Refuse larger files; with a unit, as in 100MB; default: 1 GiB")
        ->transform(CLI::AsSizeValue(false).description(""))
        ->type_name("SIZE");
}

void add_output(CLI::App& command) {
    command.add_option("-o,--output", "Write the output to this file, complete or not at all")
        ->type_name("FILE")
        ->transform(file_name());
}

void add_colour(CLI::App& command, std::string& when) {
    command.add_option("--color", when, "When to colour the text")
        ->check(CLI::IsMember({"auto", "always", "never"}))
        ->capture_default_str();
}

void require_one_standard_input(const std::vector<std::string>& files) {
    if (std::count(files.begin(), files.end(), "-") > 1) {
        throw InputError("standard input can be read only once: give \"-\" once");
    }
}
