#include "configuration/yang_model.h"

#include <libyang/libyang.h>

#include <algorithm>
#include <filesystem>

#include "configuration/libyang_complaint.h"
#include "errors/cannot_check.h"
#include "keypath.h"

using local_platform::DataTree;
using local_platform::SchemaNode;
using local_platform::TreeBuilder;

namespace {

struct DataDeleter {
    void operator()(lyd_node* node) const { lyd_free_all(node); }
};
using Data = std::unique_ptr<lyd_node, DataDeleter>;

struct InputDeleter {
    void operator()(ly_in* input) const { ly_in_free(input, 0); }
};
using Input = std::unique_ptr<ly_in, InputDeleter>;

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
        throw CannotCheck(dir + ": holds no YANG module; name the folder with --yang-dir");
    }
    std::sort(names.begin(), names.end());
    // Several revisions of a module are one module.
    names.erase(std::unique(names.begin(), names.end()), names.end());
    return names;
}

std::string step_of(const lyd_node& node) {
    const std::string step = std::string("/") + node.schema->name;
    if (node.schema->nodetype != LYS_LIST) {
        return step;
    }
    std::vector<std::string_view> keys;
    for (const lyd_node* key = lyd_child(&node); key != nullptr && lysc_is_key(key->schema);
         key = key->next) {
        keys.emplace_back(lyd_get_value(key));
    }
    return step + local_platform::keys_text(keys);
}

void add_nodes(const lyd_node* first, const std::string& parent, TreeBuilder& builder) {
    for (const lyd_node* node = first; node != nullptr; node = node->next) {
        if ((node->flags & LYD_DEFAULT) != 0) {
            continue;  // a container that libyang adds although it holds nothing
        }
        const std::string path = parent + step_of(*node);
        const bool is_leaf = node->schema->nodetype == LYS_LEAF;
        builder.set(path, is_leaf ? lyd_get_value(node) : "");
        add_nodes(lyd_child(node), path, builder);
    }
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

Input open_input(const ConfigurationFile& file) {
    ly_in* input = nullptr;
    if (ly_in_new_memory(file.data.c_str(), &input) != LY_SUCCESS) {
        throw CannotCheck(file.name + ": libyang cannot read it");
    }
    return Input(input);
}

/// libyang's JSON parser ends with the first value: what follows it would go unchecked.
void require_nothing_behind(const ConfigurationFile& file, std::size_t parsed) {
    const std::size_t next = file.data.find_first_not_of(" \t\r\n", parsed);
    if (next == std::string::npos) {
        return;
    }
    const auto end = file.data.begin() + static_cast<std::ptrdiff_t>(next);
    const auto line = 1 + std::count(file.data.begin(), end, '\n');
    throw CannotCheck(file.name + ":" + std::to_string(line) +
                      ": text behind the configuration; give one {...} only");
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
        modules.push_back(ly_ctx_load_module(context, name.c_str(), nullptr, nullptr));
        if (modules.back() == nullptr) {
            std::string file = folder + name;
            throw CannotCheck(first_complaint(context, file.append(".yang")));
        }
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

DataTree YangModel::read(const ConfigurationFile& file) const {
    ly_err_clean(context_.get(), nullptr);
    lyd_node* parsed = nullptr;
    const LYD_FORMAT format = file.format == ConfigurationFormat::xml ? LYD_XML : LYD_JSON;
    const Input input = open_input(file);
    const LY_ERR result =
        lyd_parse_data(context_.get(), nullptr, input.get(), format, LYD_PARSE_STRICT,
                       LYD_VALIDATE_NO_STATE | LYD_VALIDATE_PRESENT, &parsed);
    const Data data(parsed);
    if (result != LY_SUCCESS) {
        throw CannotCheck(first_complaint(context_.get(), file.name) +
                          " Correct it there and check again.");
    }
    require_nothing_behind(file, ly_in_parsed(input.get()));
    TreeBuilder builder(schema_);
    try {
        add_nodes(data.get(), {}, builder);
    } catch (const local_platform::PlatformError& error) {
        throw CannotCheck(file.name + ": " + error.what());
    }
    return std::move(builder).build();
}
