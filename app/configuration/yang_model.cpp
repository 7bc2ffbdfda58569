#include "configuration/yang_model.h"

#include <libyang/libyang.h>

#include <algorithm>

#include "configuration/data_error.h"
#include "configuration/read_data.h"
#include "configuration/tree_filler.h"
#include "errors/input_error.h"

using local_platform::SchemaNode;

namespace {

void visit_rules(const YangModel& model, const SchemaNode& node, const std::string& path,
                 const YangModel::VisitRule& visit) {
    for (const Rule& rule : model.rules(node)) {
        visit(path, rule);
    }
    for (const SchemaNode& child : node.children) {
        visit_rules(model, child, path + "/" + child.name, visit);
    }
}

}  // namespace

YangModel::YangModel(const std::string& yang_dir)
    : contexts_(std::make_unique<ContextPool>(yang_dir)) {
    const std::vector<const lys_module*>& modules = contexts_->first().modules;
    schema_ = std::make_shared<const SchemaNode>(describe_modules(modules));
    rules_ = collect_rules(modules, *schema_);
}

const std::vector<Rule>& YangModel::rules(const SchemaNode& node) const {
    static const std::vector<Rule> kNone;
    const auto found = rules_.find(&node);
    return found == rules_.end() ? kNone : found->second;
}

void YangModel::for_each_rule(const VisitRule& visit) const {
    visit_rules(*this, *schema_, {}, visit);
}

std::vector<std::string> YangModel::rule_names() const {
    std::vector<std::string> names;
    for_each_rule([&](const std::string& /*path*/, const Rule& rule) {
        if (std::find(names.begin(), names.end(), rule.name) == names.end()) {
            names.push_back(rule.name);
        }
    });
    return names;
}

Configuration YangModel::read(const std::shared_ptr<SourceText>& file, const ReadOptions& options,
                              const Configuration* running) const {
    const ContextPool::Borrowed context = contexts_->borrow();
    ReadData data = read_data(*context, file, options, running);
    ly_err_clean(context.get(), nullptr);
    if (!data.tree.validate(*context)) {
        throw data_error(*context, data.tree, data.sources);
    }
    try {
        return {std::move(data.sources), std::move(data.unknown_data),
                fill_tree(std::move(data.tree), schema_), data.is_edit};
    } catch (const local_platform::PlatformError& error) {
        throw InputError(file->name() + ": " + error.what());
    }
}
