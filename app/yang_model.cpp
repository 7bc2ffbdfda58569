#include "yang_model.h"

#include <libyang/libyang.h>

#include <algorithm>
#include <filesystem>

#include "cannot_judge.h"

using local_platform::DataTree;
using local_platform::NodeKind;
using local_platform::SchemaNode;
using local_platform::TreeBuilder;

namespace {

constexpr std::string_view kExtensionModule = "validation-point";

struct DataDeleter {
    void operator()(lyd_node* node) const { lyd_free_all(node); }
};
using Data = std::unique_ptr<lyd_node, DataDeleter>;

using Uses = std::unordered_map<const SchemaNode*, std::vector<ValidationUse>>;

// --- Errors
// ----------------------------------------------------------------------------------------

/// ":12" for libyang's "... line number 12."; empty without a line.
std::string line_suffix(std::string_view location) {
    constexpr std::string_view kLineNumber = "ine number ";
    const std::size_t found = location.find(kLineNumber);
    if (found == std::string_view::npos) {
        return {};
    }
    const std::string_view rest = location.substr(found + kLineNumber.size());
    return ":" + std::string(rest.substr(0, rest.find_first_not_of("0123456789")));
}

/// The quoted path in libyang's "Data location "/...", line number 12."; empty without one.
std::string quoted_path(std::string_view location) {
    const std::size_t open = location.find('"');
    const std::size_t close = location.rfind('"');
    return open >= close ? std::string() : std::string(location.substr(open + 1, close - open - 1));
}

/// libyang's first complaint about `file` since they were last cleared: the later ones follow from
/// it.
std::string first_complaint(const ly_ctx* context, const std::string& file) {
    const ly_err_item* const item = ly_err_first(context);
    if (item == nullptr) {
        return file + ": libyang refuses it without a reason";
    }
    const std::string_view location = item->path == nullptr ? "" : item->path;
    const std::string path = quoted_path(location);
    std::string complaint = file + line_suffix(location) + ": " + item->msg;
    if (!path.empty()) {
        complaint.append(" At ").append(path).append(".");
    }
    return complaint;
}

// --- The model
// -------------------------------------------------------------------------------------

std::string_view without_prefix(std::string_view name) {
    const std::size_t colon = name.find(':');
    return colon == std::string_view::npos ? name : name.substr(colon + 1);
}

/// What the platform holds a leaf's value as. Address types are told by the name of their typedef,
/// since YANG knows them as strings only; every other type is kept as its text.
confd_vtype value_type(const lysc_node_leaf& leaf, const lysp_node_leaf& parsed) {
    switch (leaf.type->basetype) {
        case LY_TYPE_INT32:
            return C_INT32;
        case LY_TYPE_UINT8:
            return C_UINT8;
        case LY_TYPE_BOOL:
            return C_BOOL;
        case LY_TYPE_ENUM:
            return C_ENUM_VALUE;
        case LY_TYPE_EMPTY:
            return C_XMLTAG;
        default:
            break;
    }
    static constexpr std::pair<std::string_view, confd_vtype> kAddressTypes[] = {
        {"ipv4-address-no-zone", C_IPV4},
        {"ipv6-address-no-zone", C_IPV6},
        {"ipv4-address-and-prefix-length", C_IPV4_AND_PLEN},
        {"ipv6-address-and-prefix-length", C_IPV6_AND_PLEN},
    };
    const std::string_view type_name = without_prefix(parsed.type.name);
    for (const auto& [name, type] : kAddressTypes) {
        if (name == type_name) {
            return type;
        }
    }
    return C_BUF;
}

void describe_leaf(const lysc_node_leaf& leaf, SchemaNode& node) {
    node.kind = NodeKind::leaf;
    node.type = value_type(leaf, *static_cast<const lysp_node_leaf*>(leaf.priv));
    if (node.type != C_ENUM_VALUE) {
        return;
    }
    const auto* const type = reinterpret_cast<const lysc_type_enum*>(leaf.type);
    LY_ARRAY_COUNT_TYPE i = 0;
    LY_ARRAY_FOR(type->enums, i) {
        node.enums.emplace_back(type->enums[i].value, type->enums[i].name);
    }
}

SchemaNode describe(const lysc_node& source);

void describe_children(const lysc_node* parent, const lysc_module* module, SchemaNode& node) {
    const lysc_node* child = nullptr;
    while ((child = lys_getnext(child, parent, module, 0)) != nullptr) {
        const bool is_data = (child->nodetype & (LYS_CONTAINER | LYS_LIST | LYS_LEAF)) != 0;
        if (!is_data) {
            throw CannotJudge(std::string(child->module->name) + ": " + child->name +
                              ": only containers, lists and leafs are supported");
        }
        node.children.push_back(describe(*child));
    }
}

SchemaNode describe(const lysc_node& source) {
    SchemaNode node;
    node.name = source.name;
    if (source.nodetype == LYS_LEAF) {
        describe_leaf(reinterpret_cast<const lysc_node_leaf&>(source), node);
        return node;
    }
    node.kind = source.nodetype == LYS_LIST ? NodeKind::list : NodeKind::container;
    describe_children(&source, nullptr, node);
    if (node.kind == NodeKind::list) {
        const lysc_node* child = lysc_node_child(&source);
        for (; child != nullptr && lysc_is_key(child); child = child->next) {
            node.keys.emplace_back(child->name);
        }
    }
    return node;
}

// --- The uses
// --------------------------------------------------------------------------------------

bool is_validate(const lysc_ext_instance& extension) {
    return kExtensionModule == extension.def->module->name &&
           std::string_view(extension.def->name) == "validate";
}

/// A statement's argument on one line, however the module breaks it.
std::string argument_of(const lysp_stmt& stmt) {
    std::string text = stmt.arg == nullptr ? "" : stmt.arg;
    std::replace(text.begin(), text.end(), '\n', ' ');
    return text;
}

RuleMessage read_message(const lysp_stmt& stmt, bool is_warning) {
    RuleMessage message{is_warning, argument_of(stmt), {}};
    if (stmt.child != nullptr && without_prefix(stmt.child->stmt) == "remedy") {
        message.remedy = argument_of(*stmt.child);
    }
    return message;
}

ValidationUse read_use(const lysp_ext_instance& extension) {
    ValidationUse use;
    use.point = extension.argument;
    for (const lysp_stmt* stmt = extension.child; stmt != nullptr; stmt = stmt->next) {
        const std::string_view name = without_prefix(stmt->stmt);
        if (name == "opaque") {
            use.selector = argument_of(*stmt);
        } else if (name == "only-when-changed") {
            use.only_when_changed = true;
        } else if (name == "demand") {
            use.demand = argument_of(*stmt);
        } else if (name == "reads") {
            use.reads = argument_of(*stmt);
        } else if (name == "calls") {
            use.calls = argument_of(*stmt);
        } else if (name == "error" || name == "warning") {
            use.messages.push_back(read_message(*stmt, name == "warning"));
        }
    }
    return use;
}

/// Compiled extensions know their module, parsed ones their sub-statements.
void collect_uses(const lysc_node& source, const SchemaNode& node, Uses& uses) {
    const auto* const parsed = static_cast<const lysp_node*>(source.priv);
    LY_ARRAY_COUNT_TYPE i = 0;
    LY_ARRAY_FOR(source.exts, i) {
        if (is_validate(source.exts[i])) {
            uses[&node].push_back(read_use(parsed->exts[i]));
        }
    }
}

void collect_uses_below(const lysc_node* parent, const lysc_module* module, const SchemaNode& node,
                        std::size_t& index, Uses& uses) {
    const lysc_node* child = nullptr;
    while ((child = lys_getnext(child, parent, module, 0)) != nullptr) {
        const SchemaNode& described = node.children[index++];
        collect_uses(*child, described, uses);
        std::size_t first = 0;
        collect_uses_below(child, nullptr, described, first, uses);
    }
}

// --- Modules
// ---------------------------------------------------------------------------------------

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
        throw CannotJudge(dir + ": the folder of YANG modules cannot be read: " + error.message());
    }
    if (names.empty()) {
        throw CannotJudge(dir + ": holds no YANG module; name the folder with --yang-dir");
    }
    std::sort(names.begin(), names.end());
    return names;
}

// --- Data
// ------------------------------------------------------------------------------------------

std::string step_of(const lyd_node& node) {
    std::string step = std::string("/") + node.schema->name;
    if (node.schema->nodetype != LYS_LIST) {
        return step;
    }
    char separator = '{';
    for (const lyd_node* key = lyd_child(&node); key != nullptr && lysc_is_key(key->schema);
         key = key->next) {
        step += separator;
        step += local_platform::quoted_key(lyd_get_value(key));
        separator = ' ';
    }
    return step + "}";
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
        throw CannotJudge(yang_dir + ": no YANG context: " + first_complaint(nullptr, yang_dir));
    }
    context_.reset(context);

    SchemaNode root;
    std::vector<const lysc_module*> compiled;
    for (const std::string& name : names) {
        const lys_module* const module =
            ly_ctx_load_module(context, name.c_str(), nullptr, nullptr);
        if (module == nullptr) {
            throw CannotJudge(first_complaint(context, yang_dir + "/" + name + ".yang"));
        }
        compiled.push_back(module->compiled);
    }
    for (const lysc_module* const module : compiled) {
        describe_children(nullptr, module, root);
    }
    schema_ = std::make_shared<const SchemaNode>(std::move(root));
    std::size_t index = 0;
    for (const lysc_module* const module : compiled) {
        collect_uses_below(nullptr, module, *schema_, index, uses_);
    }
}

const std::vector<ValidationUse>& YangModel::uses(const SchemaNode& node) const {
    static const std::vector<ValidationUse> kNone;
    const auto found = uses_.find(&node);
    return found == uses_.end() ? kNone : found->second;
}

DataTree YangModel::read(const ConfigurationFile& file) const {
    ly_err_clean(context_.get(), nullptr);
    lyd_node* parsed = nullptr;
    const LYD_FORMAT format = file.format == ConfigurationFormat::xml ? LYD_XML : LYD_JSON;
    const LY_ERR result =
        lyd_parse_data_mem(context_.get(), file.data.c_str(), format, LYD_PARSE_STRICT,
                           LYD_VALIDATE_NO_STATE | LYD_VALIDATE_PRESENT, &parsed);
    const Data data(parsed);
    if (result != LY_SUCCESS) {
        throw CannotJudge(first_complaint(context_.get(), file.name) +
                          " Correct it there and check again.");
    }
    TreeBuilder builder(schema_);
    try {
        add_nodes(data.get(), {}, builder);
    } catch (const local_platform::PlatformError& error) {
        throw CannotJudge(file.name + ": " + error.what());
    }
    return std::move(builder).build();
}
