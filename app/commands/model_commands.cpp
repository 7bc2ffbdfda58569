#include <functional>

#include "commands/commands.h"
#include "commands/exit_code.h"
#include "commands/options.h"
#include "configuration/yang_model.h"
#include "errors/cannot_check.h"
#include "terminal/output.h"

using local_platform::SchemaNode;

namespace {

using VisitUse = std::function<void(const std::string& path, const ValidationUse&)>;

/// Calls `visit` for every use below `node`, in the model's order.
void for_each_use(const YangModel& model, const SchemaNode& node, const std::string& path,
                  const VisitUse& visit) {
    for (const ValidationUse& use : model.uses(node)) {
        visit(path, use);
    }
    for (const SchemaNode& child : node.children) {
        for_each_use(model, child, path + "/" + child.name, visit);
    }
}

std::string as_text(const std::string& path, const ValidationUse& use) {
    std::string text = use.selector + "\n";
    text += "  runs on   " + path + (use.only_when_changed ? ", only when it changed" : "") + "\n";
    text += "  demands   " + use.demand + "\n";
    text += "  reads     " + use.reads + "\n";
    text += "  calls     " + use.calls + "\n";
    for (const RuleMessage& message : use.messages) {
        text += message.is_warning ? "  warning   " : "  error     ";
        text += message.text + "\n            " + message.remedy + "\n";
    }
    return text;
}

std::string as_markdown(const std::string& path, const ValidationUse& use) {
    std::string text = "\n## `" + use.selector + "`\n\n" + use.demand + "\n\n";
    text += "- Runs on: `" + path + "`" + (use.only_when_changed ? ", only when it changed" : "") +
            "\n";
    text += "- Reads: " + use.reads + "\n";
    text += "- Platform calls: " + use.calls + "\n\n";
    text += "| | Message | What to do |\n|---|---|---|\n";
    for (const RuleMessage& message : use.messages) {
        text += message.is_warning ? "| warning | `" : "| error | `";
        text += message.text + "` | " + message.remedy + " |\n";
    }
    return text;
}

/// Lists the uses of the validation point that the model makes.
int run_rules(const std::string& yang_dir) {
    const YangModel model(yang_dir);
    std::string lines;
    for_each_use(model, *model.schema(), {},
                 [&](const std::string& path, const ValidationUse& use) {
                     lines += path + "  " + use.selector;
                     lines += use.only_when_changed ? "  (only when changed)\n" : "\n";
                 });
    print(lines);
    return kExitClean;
}

/// Tells what the rule `selector` demands, or every rule when it is empty; as text or as Markdown.
int run_explain(const std::string& yang_dir, const std::string& selector, bool markdown) {
    const YangModel model(yang_dir);
    std::string text;
    for_each_use(model, *model.schema(), {},
                 [&](const std::string& path, const ValidationUse& use) {
                     if (selector.empty() || selector == use.selector) {
                         text += markdown ? as_markdown(path, use) : as_text(path, use);
                     }
                 });
    if (text.empty()) {
        throw CannotCheck(selector + ": the model uses no such rule; vrrp-valid rules lists them");
    }
    print(text);
    return kExitClean;
}

}  // namespace

Subcommand add_rules_command(CLI::App& app) {
    const auto yang_dir = std::make_shared<std::string>();
    CLI::App* const command =
        add_subcommand(app, "rules", "List where the model asks for a rule", "--yang-dir yang");
    add_yang_dir(*command, *yang_dir);
    return {command, [yang_dir] { return run_rules(*yang_dir); }};
}

Subcommand add_explain_command(CLI::App& app) {
    struct Options {
        std::string yang_dir;
        std::string selector;
        bool markdown = false;
    };
    const auto options = std::make_shared<Options>();
    CLI::App* const command = add_subcommand(
        app, "explain", "Tell what a rule demands and what to do", "vrrp_vrf_validation");
    command->add_option("SELECTOR", options->selector, "The rule; every one without it");
    command->add_flag("--markdown", options->markdown, "As Markdown");
    add_yang_dir(*command, options->yang_dir);
    return {command, [options] {
                return run_explain(options->yang_dir, options->selector, options->markdown);
            }};
}
