#include "configuration/yang_model.h"

#include <libyang/libyang.h>

#include <algorithm>

#include "configuration/edit.h"
#include "configuration/extension_places.h"
#include "configuration/validated_tree.h"
#include "errors/input_error.h"

using local_platform::DataTree;
using local_platform::SchemaNode;

namespace {

void collect_rule_names(const YangModel& model, const SchemaNode& node,
                        std::vector<std::string>& rule_names) {
    for (const Rule& use : model.uses(node)) {
        if (std::find(rule_names.begin(), rule_names.end(), use.name) == rule_names.end()) {
            rule_names.push_back(use.name);
        }
    }
    for (const SchemaNode& child : node.children) {
        collect_rule_names(model, child, rule_names);
    }
}

/// Sees that no file of `module` uses a validation point where this would be lost.
void require_plain_uses_in(const lys_module& module) {
    if (module.filepath != nullptr) {
        require_plain_uses(module.filepath);
    }
    LY_ARRAY_COUNT_TYPE i = 0;
    LY_ARRAY_FOR(module.parsed->includes, i) {
        const lysp_submodule* const submodule = module.parsed->includes[i].submodule;
        if (submodule->filepath != nullptr) {
            require_plain_uses(submodule->filepath);
        }
    }
}

}  // namespace

YangModel::YangModel(const std::string& yang_dir)
    : contexts_(std::make_unique<ContextPool>(yang_dir)) {
    const std::vector<const lys_module*>& modules = contexts_->first().modules;
    for (const lys_module* const module : modules) {
        require_plain_uses_in(*module);
    }
    schema_ = std::make_shared<const SchemaNode>(describe_modules(modules));
    uses_ = collect_uses(modules, *schema_);
}

const std::vector<Rule>& YangModel::uses(const SchemaNode& node) const {
    static const std::vector<Rule> kNone;
    const auto found = uses_.find(&node);
    return found == uses_.end() ? kNone : found->second;
}

std::vector<std::string> YangModel::rule_names() const {
    std::vector<std::string> rule_names;
    collect_rule_names(*this, *schema_, rule_names);
    return rule_names;
}

Document YangModel::parse(ConfigurationFile file, const ReadOptions& options) const {
    return file.format == ConfigurationFormat::xml ? read_xml(context(), std::move(file), options)
                                                   : read_json(context(), std::move(file), options);
}

Configuration YangModel::candidate(ConfigurationFile file, const ReadOptions& options,
                                   const Document* running) const {
    Document document = parse(std::move(file), options);
    if (document.is_edit) {
        if (running == nullptr) {
            throw InputError(document.name() +
                             ": is an edit, and there is no running configuration to edit; name it "
                             "with --running");
        }
        document = apply_edit(*running, document);
    }
    DataTree tree = this->tree(document);
    return {std::move(document), std::move(tree)};
}

DataTree YangModel::tree(const Document& document) const {
    return validated_tree(*contexts_->borrow(), context(), schema_, document);
}
