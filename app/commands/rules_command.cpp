#include <nlohmann/json.hpp>

#include "commands/commands.h"
#include "commands/exit_code.h"
#include "commands/options.h"
#include "configuration/yang_model.h"
#include "errors/did_you_mean.h"
#include "errors/input_error.h"
#include "terminal/output.h"

using Json = nlohmann::ordered_json;

namespace {

/// What to tell of the rules, and how.
struct RuleOptions {
    std::string yang_dir;
    std::string rule;             ///< of the rule to tell of; empty for every one
    std::string format = "text";  ///< or "json" or, of `explain`, "markdown"
    bool in_lines = false;        ///< text that is a line for each use
    bool verbose = false;         ///< also the calls of the platform
};

std::string as_line(const std::string& path, const Rule& use, bool /*verbose*/) {
    return path + "  " + use.name + (use.only_when_changed ? "  (only when changed)\n" : "\n");
}

std::string as_text(const std::string& path, const Rule& use, bool verbose) {
    std::string text = use.name + "\n";
    text += "  checks    " + path + (use.only_when_changed ? ", only when it changed" : "") + "\n";
    text += "  requires  " + use.demand + "\n";
    text += "  looks at  " + use.reads + "\n";
    text += verbose ? "  calls     " + use.calls + "\n" : "";
    for (const RuleMessage& message : use.messages) {
        text += message.is_warning ? "  warning   " : "  error     ";
        text += message.text + "\n            " + message.help + "\n";
    }
    return text;
}

std::string as_markdown(const std::string& path, const Rule& use, bool verbose) {
    std::string text = "\n## `" + use.name + "`\n\n" + use.demand + "\n\n";
    text +=
        "- Checks: `" + path + "`" + (use.only_when_changed ? ", only when it changed" : "") + "\n";
    text += "- Looks at: " + use.reads + "\n";
    text += verbose ? "- Platform calls: " + use.calls + "\n" : "";
    text += "\n| | Message | What to do |\n|---|---|---|\n";
    for (const RuleMessage& message : use.messages) {
        text += message.is_warning ? "| warning | `" : "| error | `";
        text += message.text + "` | " + message.help + " |\n";
    }
    return text;
}

Json as_json(const std::string& path, const Rule& use, bool verbose) {
    Json rule = {{"rule", use.name},
                 {"path", path},
                 {"only_when_changed", use.only_when_changed},
                 {"requires", use.demand},
                 {"looks_at", use.reads}};
    if (verbose) {
        rule["calls"] = use.calls;
    }
    rule["messages"] = Json::array();
    for (const RuleMessage& message : use.messages) {
        rule["messages"].push_back({{"severity", message.is_warning ? "warning" : "error"},
                                    {"message", message.text},
                                    {"help", message.help}});
    }
    return rule;
}

/// Tells of the uses of the validation point that the model makes.
int run_rules(const RuleOptions& options) {
    const YangModel model(options.yang_dir);
    const auto text_of = options.in_lines               ? as_line
                         : options.format == "markdown" ? as_markdown
                                                        : as_text;
    std::string text;
    Json rules = Json::array();
    model.for_each_rule([&](const std::string& path, const Rule& use) {
        if (options.rule.empty() || options.rule == use.name) {
            text += text_of(path, use, options.verbose);
            rules.push_back(as_json(path, use, options.verbose));
        }
    });
    if (rules.empty()) {  // nothing at all would tell nobody why
        throw InputError(options.rule.empty()
                             ? options.yang_dir + ": the YANG modules use no rule; check --yang-dir"
                             : "there is no rule \"" + options.rule + "\"" +
                                   did_you_mean(options.rule, model.rule_names()) +
                                   "; run vrrp-valid rules");
    }
    const Json document = {
        {"format_version", "1.0"}, {"command_version", VRRP_VALID_VERSION}, {"rules", rules}};
    print(options.format == "json" ? document.dump(2) + "\n" : text);
    return kExitClean;
}

/// The options that both subcommands have.
void add_rule_options(CLI::App& command, RuleOptions& options,
                      const std::vector<std::string>& formats) {
    command.add_option("--format", options.format, "How to print the rules")
        ->check(CLI::IsMember(formats))
        ->capture_default_str()
        ->configurable(false);  // a default for findings is none for rules
    add_yang_dir(command, options.yang_dir);
    add_output(command);
}

}  // namespace

Subcommand add_rules_command(CLI::App& app) {
    const auto options = std::make_shared<RuleOptions>();
    CLI::App* const command =
        add_subcommand(app, "rules", "List the rules and what they check", "--format json");
    options->in_lines = true;
    add_rule_options(*command, *options, {"text", "json"});
    return {command, [options] { return run_rules(*options); }};
}

Subcommand add_explain_command(CLI::App& app) {
    const auto options = std::make_shared<RuleOptions>();
    CLI::App* const command = add_subcommand(
        app, "explain", "Explain what a rule requires and what to do", "vrrp_vrf_validation");
    command->add_option("RULE", options->rule, "The rule; without it, every one")
        ->type_name("RULE");
    command->add_flag("-v,--verbose", options->verbose,
                      "Also list the platform calls that the rule makes");
    add_rule_options(*command, *options, {"text", "markdown", "json"});
    return {command, [options] { return run_rules(*options); }};
}
