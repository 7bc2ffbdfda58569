#include "commands.h"
#include "output.h"
#include "yang_model.h"

using local_platform::SchemaNode;

namespace {

void list_uses(const YangModel& model, const SchemaNode& node, const std::string& path,
               std::string& lines) {
    for (const ValidationUse& use : model.uses(node)) {
        lines += path + "  " + use.selector +
                 (use.only_when_changed ? "  (only when changed)" : "") + "\n";
    }
    for (const SchemaNode& child : node.children) {
        list_uses(model, child, path + "/" + child.name, lines);
    }
}

}  // namespace

int run_rules(const std::string& yang_dir) {
    const YangModel model(yang_dir);
    std::string lines;
    list_uses(model, *model.schema(), {}, lines);
    print(lines);
    return kExitClean;
}
