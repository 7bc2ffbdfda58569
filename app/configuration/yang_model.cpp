#include "configuration/yang_model.h"

#include <libyang/libyang.h>

#include <algorithm>
#include <filesystem>

#include "configuration/edit.h"
#include "configuration/extension_places.h"
#include "configuration/libyang_complaint.h"
#include "configuration/validated_tree.h"
#include "errors/cannot_check.h"

using local_platform::DataTree;
using local_platform::SchemaNode;

namespace {

/// The names of the modules in `dir`, in alphabetical order.
std::vector<std::string> module_names(const std::string& dir) {
    std::vector<std::string> names;
    std::error_code error;
    for (const auto& entry : std::filesystem::directory_iterator(dir, error)) {
        const std::string stem = entry.path().stem().string();
        if (entry.path().extension() == ".yang") {
            names.push_back(stem.substr(0, stem.find('@')));
        }
    }
    if (error) {
        throw CannotCheck(dir + ": the folder of YANG modules cannot be read: " + error.message());
    }
    if (names.empty()) {
        throw CannotCheck(dir + ": has no YANG module; name the folder with --yang-dir");
    }
    std::sort(names.begin(), names.end());
    // Several revisions of a module are one module.
    names.erase(std::unique(names.begin(), names.end()), names.end());
    return names;
}

void collect_selectors(const YangModel& model, const SchemaNode& node,
                       std::vector<std::string>& selectors) {
    for (const ValidationUse& use : model.uses(node)) {
        if (std::find(selectors.begin(), selectors.end(), use.selector) == selectors.end()) {
            selectors.push_back(use.selector);
        }
    }
    for (const SchemaNode& child : node.children) {
        collect_selectors(model, child, selectors);
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

void YangModel::ContextDeleter::operator()(ly_ctx* context) const {
    ly_ctx_destroy(context);
}

YangModel::YangModel(const std::string& yang_dir) {
    ly_log_options(LY_LOSTORE);
    const std::vector<std::string> names = module_names(yang_dir);
    ly_ctx* context = nullptr;
    // Only that folder: libyang would take a newer module that lies about in the working one.
    constexpr uint16_t kOptions =
        LY_CTX_SET_PRIV_PARSED | LY_CTX_NO_YANGLIBRARY | LY_CTX_DISABLE_SEARCHDIR_CWD;
    if (ly_ctx_new(yang_dir.c_str(), kOptions, &context) != LY_SUCCESS) {
        throw CannotCheck(yang_dir + ": the folder of YANG modules cannot be used");
    }
    context_.reset(context);

    std::vector<const lys_module*> modules;
    const std::string folder = yang_dir + "/";
    for (const std::string& name : names) {
        const char* every_feature[] = {"*", nullptr};
        modules.push_back(ly_ctx_load_module(context, name.c_str(), nullptr, every_feature));
        if (modules.back() == nullptr) {
            std::string file = folder + name;
            throw CannotCheck(first_complaint(context, file.append(".yang")));
        }
    }
    for (const lys_module* const module : modules) {
        require_plain_uses_in(*module);
    }
    schema_ = std::make_shared<const SchemaNode>(describe_modules(modules));
    uses_ = collect_uses(modules, *schema_);
}

const std::vector<ValidationUse>& YangModel::uses(const SchemaNode& node) const {
    static const std::vector<ValidationUse> kNone;
    const auto found = uses_.find(&node);
    return found == uses_.end() ? kNone : found->second;
}

std::vector<std::string> YangModel::selectors() const {
    std::vector<std::string> selectors;
    collect_selectors(*this, *schema_, selectors);
    return selectors;
}

Document YangModel::parse(ConfigurationFile file, const ReadOptions& options) const {
    return file.format == ConfigurationFormat::xml ? read_xml(*context_, std::move(file), options)
                                                   : read_json(*context_, std::move(file), options);
}

Configuration YangModel::candidate(ConfigurationFile file, const ReadOptions& options,
                                   const Document* running) const {
    Document document = parse(std::move(file), options);
    if (document.is_edit) {
        if (running == nullptr) {
            throw CannotCheck(
                document.name() +
                ": is an edit, and there is no running configuration to edit; name it "
                "with --running");
        }
        document = apply_edit(*running, document);
    }
    DataTree tree = this->tree(document);
    return {std::move(document), std::move(tree)};
}

DataTree YangModel::tree(const Document& document) const {
    return validated_tree(*context_, schema_, document);
}
