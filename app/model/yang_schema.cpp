#include "model/yang_schema.h"

#include <libyang/libyang.h>

#include <algorithm>
#include <fstream>
#include <sstream>

#include "errors/input_error.h"
#include "model/libyang_version.h"
#include "model/type_name.h"

using local_platform::NodeKind;
using local_platform::SchemaNode;

std::size_t key_count(const lysc_node& node) {
    std::size_t keys = 0;
    for (const lysc_node* child = lysc_node_child(&node); child != nullptr && lysc_is_key(child);
         child = child->next) {
        ++keys;
    }
    return keys;
}

std::size_t key_position(const lysc_node& key) {
    std::size_t position = 0;
    for (const lysc_node* one = lysc_node_child(key.parent); one != &key; one = one->next) {
        ++position;
    }
    return position;
}

bool is_supported(const lysc_node& node) {
    if ((node.flags & LYS_CONFIG_W) == 0) {
        return false;
    }
    return node.nodetype != LYS_LIST || (key_count(node) > 0 && key_count(node) < MAXKEYLEN);
}

namespace {

constexpr const char* kExtensionModule = "validation-point";

bool is_ours(const lysc_ext_instance& extension, std::string_view name) {
    return std::string_view(extension.def->module->name) == kExtensionModule &&
           name == extension.def->name;
}

}  // namespace

bool is_nonpresence_container(const lysc_node& node) {
    return node.nodetype == LYS_CONTAINER &&
           static_cast<const lysp_node_container*>(node.priv)->presence == nullptr;
}

bool is_secret(const lysc_node& leaf) {
    LY_ARRAY_COUNT_TYPE i = 0;
    LY_ARRAY_FOR(leaf.exts, i) {
        if (is_ours(leaf.exts[i], "secret")) {
            return true;
        }
    }
    return false;
}

namespace {

/// What the platform holds a leaf's value as.
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
    return text_type(parsed.type.name);
}

void describe_leaf(const lysc_node_leaf& leaf, SchemaNode& node) {
    const auto& parsed = *static_cast<const lysp_node_leaf*>(leaf.priv);
    node.type = value_type(leaf, parsed);
    if (node.type != C_ENUM_VALUE) {
        return;
    }
    const auto* const type = reinterpret_cast<const lysc_type_enum*>(leaf.type);
    LY_ARRAY_COUNT_TYPE i = 0;
    LY_ARRAY_FOR(type->enums, i) {
        node.enums.emplace_back(type->enums[i].value, type->enums[i].name);
    }
}

/// A path names nodes without their module: two that it cannot tell apart would be taken for one.
void require_own_name(const lysc_node& node, const std::vector<const lysc_node*>& siblings) {
    for (const lysc_node* const sibling : siblings) {
        if (std::string_view(sibling->name) == node.name) {
            throw InputError("the modules " + std::string(sibling->module->name) + " and " +
                             node.module->name + " both have a node " + node.name +
                             " in the same place, and a path cannot tell them apart; remove one "
                             "of the modules from the folder");
        }
    }
}

/// Adds the supported nodes below `parent`, at the top of `module` without one, to `nodes`.
void add_supported(const lysc_node* parent, const lysc_module* module,
                   std::vector<const lysc_node*>& nodes) {
    const lysc_node* child = nullptr;
    while ((child = lys_getnext(child, parent, module, 0)) != nullptr) {
        if (is_supported(*child)) {
            require_own_name(*child, nodes);
            nodes.push_back(child);
        }
    }
}

std::vector<const lysc_node*> supported_below(const lysc_node& parent) {
    std::vector<const lysc_node*> nodes;
    add_supported(&parent, nullptr, nodes);
    return nodes;
}

SchemaNode describe(const lysc_node& source) {
    SchemaNode node;
    node.name = source.name;
    if ((source.nodetype & (LYS_CONTAINER | LYS_LIST)) == 0) {
        node.kind = NodeKind::leaf;
        node.type = C_BUF;
        node.is_encrypted = is_secret(source);
        node.is_anydata = (source.nodetype & LYS_ANYDATA) != 0;
    }
    if (source.nodetype == LYS_LEAF) {
        describe_leaf(reinterpret_cast<const lysc_node_leaf&>(source), node);
    }
    if (node.kind == NodeKind::leaf) {
        return node;
    }
    node.kind = source.nodetype == LYS_LIST ? NodeKind::list : NodeKind::container;
    node.is_ordered_by_user = node.kind == NodeKind::list && (source.flags & LYS_ORDBY_USER) != 0;
    for (const lysc_node* const child : supported_below(source)) {
        node.children.push_back(describe(*child));
        if (lysc_is_key(child)) {
            node.keys.emplace_back(child->name);
        }
    }
    return node;
}

/// A statement's argument on one line, however the module breaks it.
std::string argument_of(const Substatement& stmt) {
    std::string text = stmt.argument == nullptr ? "" : stmt.argument;
    std::replace(text.begin(), text.end(), '\n', ' ');
    return text;
}

RuleMessage read_message(const Substatement& stmt, bool is_warning) {
    RuleMessage message{is_warning, argument_of(stmt), {}};
    if (!stmt.below.empty() && without_prefix(stmt.below[0].name) == "help") {
        message.help = argument_of(stmt.below[0]);
    }
    return message;
}

/// The file of the module, or submodule, that `use` is written in.
std::string file_of(const lysp_ext_instance& use) {
    const auto& written_in = *static_cast<const lysp_module*>(use.prefix_data);
    const char* const path = written_in.is_submod
                                 ? reinterpret_cast<const lysp_submodule&>(written_in).filepath
                                 : written_in.mod->filepath;
    return path == nullptr ? written_in.mod->name : path;
}

Rule read_rule(const lysp_ext_instance& extension) {
    Rule rule;
    rule.file = file_of(extension);
    rule.point = extension.argument;
    for (const Substatement& stmt : substatements(extension)) {
        const std::string_view name = without_prefix(stmt.name);
        if (name == "opaque") {
            rule.name = argument_of(stmt);
        } else if (name == "only-when-changed") {
            rule.only_when_changed = true;
        } else if (name == "demand") {
            rule.demand = argument_of(stmt);
        } else if (name == "reads") {
            rule.reads = argument_of(stmt);
        } else if (name == "calls") {
            rule.calls = argument_of(stmt);
        } else if (name == "error" || name == "warning") {
            rule.messages.push_back(read_message(stmt, name == "warning"));
        }
    }
    return rule;
}

/// Whether `extension` is a use of a validation point: its name is "prefix:validate", and the
/// module has that prefix for the extensions' module.
bool is_validate(const lysp_ext_instance& extension, const ly_ctx* context) {
    const lys_module* const module = ly_ctx_get_module_latest(context, kExtensionModule);
    LY_ARRAY_COUNT_TYPE i = 0;
    LY_ARRAY_FOR(module->parsed->extensions, i) {
        if (extension.def == &module->parsed->extensions[i]) {
            return std::string_view(extension.def->name) == "validate";
        }
    }
    return false;
}

/// How many uses of validation points there are in `extensions`, of libyang's parsed or compiled
/// module.
template <typename Extension, typename IsUse>
std::size_t count_uses(const Extension* extensions, IsUse is_use) {
    return static_cast<std::size_t>(
        std::count_if(extensions, extensions + LY_ARRAY_COUNT(extensions), is_use));
}

/// Whether a walk finds `node` in the platform's tree, and values that rules read.
bool is_walked(const lysc_node& node) {
    const lysc_node* const parent = lysc_data_parent(&node);
    return is_supported(node) && (node.nodetype & (LYS_LEAFLIST | LYS_ANYDATA)) == 0 &&
           (parent == nullptr || is_walked(*parent));
}

[[noreturn]] void refuse_use(const lys_module& module, const std::string& at) {
    throw InputError(std::string(module.name) + ": " + at +
                     ": a validation point is used where its rule would not run; move vp:validate "
                     "into a container, list or leaf of the configuration itself");
}

/// Refuses a node with uses that no walk over the platform's tree finds, or that are not all in the
/// statement that it was compiled from.
void require_uses_in_place(const lysc_node& node) {
    const std::size_t compiled = count_uses(
        node.exts, [](const lysc_ext_instance& one) { return is_ours(one, "validate"); });
    if (compiled == 0) {
        return;
    }
    const auto* const parsed = static_cast<const lysp_node*>(node.priv);
    const std::size_t own = count_uses(parsed->exts, [&](const lysp_ext_instance& one) {
        return is_validate(one, node.module->ctx);
    });
    if (own != compiled || !is_walked(node)) {
        refuse_use(*node.module, node.name);
    }
}

/// Refuses uses in deviations, which are lost, or are of no node.
void require_plain_deviations(const lys_module& module, const lysp_deviation* deviations) {
    const auto is_use = [&](const lysp_ext_instance& one) { return is_validate(one, module.ctx); };
    LY_ARRAY_COUNT_TYPE i = 0;
    LY_ARRAY_FOR(deviations, i) {
        std::size_t uses = count_uses(deviations[i].exts, is_use);
        for (const lysp_deviate* one = deviations[i].deviates; one != nullptr; one = one->next) {
            uses += count_uses(one->exts, is_use);
        }
        if (uses > 0) {
            refuse_use(module, std::string("deviation ") + deviations[i].nodeid);
        }
    }
}

void require_uses_in_place(const lys_module& module) {
    require_plain_deviations(module, module.parsed->deviations);
    LY_ARRAY_COUNT_TYPE i = 0;
    LY_ARRAY_FOR(module.parsed->includes, i) {
        require_plain_deviations(module, module.parsed->includes[i].submodule->deviations);
    }
    std::vector<const lysc_node*> nodes;
    lysc_module_dfs_full(
        &module,
        [](lysc_node* node, void* data, ly_bool* /*is_done*/) {
            static_cast<std::vector<const lysc_node*>*>(data)->push_back(node);
            return LY_SUCCESS;
        },
        &nodes);
    for (const lysc_node* const node : nodes) {
        require_uses_in_place(*node);
    }
}

void note_rules(const std::vector<const lysc_node*>& sources, const std::vector<SchemaNode>& nodes,
                RulesByNode& rules) {
    for (std::size_t i = 0; i < sources.size(); ++i) {
        const auto* const parsed = static_cast<const lysp_node*>(sources[i]->priv);
        LY_ARRAY_COUNT_TYPE use = 0;
        LY_ARRAY_FOR(parsed->exts, use) {
            if (is_validate(parsed->exts[use], sources[i]->module->ctx)) {
                Rule rule = read_rule(parsed->exts[use]);
                if (rule.name.empty()) {
                    throw InputError(place_of(rule) + ": " + parsed->exts[use].name + " of " +
                                     sources[i]->name +
                                     " names no rule; add opaque with the rule's name");
                }
                rules[&nodes[i]].push_back(std::move(rule));
            }
        }
        note_rules(supported_below(*sources[i]), nodes[i].children, rules);
    }
}

std::vector<const lysc_node*> supported_of(const std::vector<const lys_module*>& modules) {
    std::vector<const lysc_node*> nodes;
    for (const lys_module* const module : modules) {
        add_supported(nullptr, module->compiled, nodes);
    }
    return nodes;
}

}  // namespace

std::string place_of(const Rule& rule) {
    constexpr std::string_view kUse = ":validate";
    std::stringstream content;
    content << std::ifstream(rule.file).rdbuf();
    const std::string text = content.str();
    for (std::size_t at = text.find(kUse), next = 0; at != std::string::npos; at = next) {
        next = text.find(kUse, at + 1);
        const std::string use = text.substr(at, next - at);
        const std::size_t selector = std::min(use.find(":opaque"), use.size());
        if (rule.name.empty() ? selector == use.size()
                              : use.find(rule.name, selector) != std::string::npos) {
            const auto begin = text.begin() + static_cast<std::ptrdiff_t>(at);
            return rule.file + ":" + std::to_string(1 + std::count(text.begin(), begin, '\n'));
        }
    }
    return rule.file;
}

SchemaNode describe_modules(const std::vector<const lys_module*>& modules) {
    SchemaNode root;
    for (const lysc_node* const node : supported_of(modules)) {
        root.children.push_back(describe(*node));
    }
    return root;
}

RulesByNode collect_rules(const std::vector<const lys_module*>& modules, const SchemaNode& root) {
    for (const lys_module* const module : modules) {
        require_uses_in_place(*module);
    }
    RulesByNode rules;
    note_rules(supported_of(modules), root.children, rules);
    return rules;
}
