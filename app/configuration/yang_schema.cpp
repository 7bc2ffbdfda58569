#include "configuration/yang_schema.h"

#include <libyang/libyang.h>

#include <algorithm>

#include "configuration/type_name.h"
#include "errors/input_error.h"

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
    return node.nodetype == LYS_LIST ? key_count(node) > 0 && key_count(node) < MAXKEYLEN
                                     : (node.nodetype & (LYS_CONTAINER | LYS_LEAF)) != 0;
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
    node.kind = NodeKind::leaf;
    const auto& parsed = *static_cast<const lysp_node_leaf*>(leaf.priv);
    node.type = value_type(leaf, parsed);
    node.is_encrypted = is_secret(reinterpret_cast<const lysc_node&>(leaf));
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

/// The nodes of configuration below `parent`, at the top of `module` without one.
std::vector<const lysc_node*> configuration_below(const lysc_node* parent,
                                                  const lysc_module* module) {
    constexpr int kOther = LYS_LEAFLIST | LYS_ANYDATA;
    std::vector<const lysc_node*> nodes;
    const lysc_node* child = nullptr;
    while ((child = lys_getnext(child, parent, module, 0)) != nullptr) {
        if (is_supported(*child) ||
            ((child->flags & LYS_CONFIG_W) != 0 && (child->nodetype & kOther) != 0)) {
            nodes.push_back(child);
        }
    }
    return nodes;
}

/// The supported ones of `nodes`, each told apart from every other by its name.
std::vector<const lysc_node*> supported_of(const std::vector<const lysc_node*>& nodes) {
    std::vector<const lysc_node*> seen;
    std::vector<const lysc_node*> supported;
    for (const lysc_node* const node : nodes) {
        require_own_name(*node, seen);
        seen.push_back(node);
        if (is_supported(*node)) {
            supported.push_back(node);
        }
    }
    return supported;
}

SchemaNode describe(const lysc_node& source) {
    SchemaNode node;
    node.name = source.name;
    if (source.nodetype == LYS_LEAF) {
        describe_leaf(reinterpret_cast<const lysc_node_leaf&>(source), node);
        return node;
    }
    node.kind = source.nodetype == LYS_LIST ? NodeKind::list : NodeKind::container;
    node.is_ordered_by_user = node.kind == NodeKind::list && (source.flags & LYS_ORDBY_USER) != 0;
    for (const lysc_node* const child : supported_of(configuration_below(&source, nullptr))) {
        node.children.push_back(describe(*child));
        if (lysc_is_key(child)) {
            node.keys.emplace_back(child->name);
        }
    }
    return node;
}

/// A statement's argument on one line, however the module breaks it.
std::string argument_of(const lysp_stmt& stmt) {
    std::string text = stmt.arg == nullptr ? "" : stmt.arg;
    std::replace(text.begin(), text.end(), '\n', ' ');
    return text;
}

RuleMessage read_message(const lysp_stmt& stmt, bool is_warning) {
    RuleMessage message{is_warning, argument_of(stmt), {}};
    if (stmt.child != nullptr && without_prefix(stmt.child->stmt) == "help") {
        message.help = argument_of(*stmt.child);
    }
    return message;
}

Rule read_rule(const lysp_ext_instance& extension) {
    Rule rule;
    rule.point = extension.argument;
    for (const lysp_stmt* stmt = extension.child; stmt != nullptr; stmt = stmt->next) {
        const std::string_view name = without_prefix(stmt->stmt);
        if (name == "opaque") {
            rule.name = argument_of(*stmt);
        } else if (name == "only-when-changed") {
            rule.only_when_changed = true;
        } else if (name == "demand") {
            rule.demand = argument_of(*stmt);
        } else if (name == "reads") {
            rule.reads = argument_of(*stmt);
        } else if (name == "calls") {
            rule.calls = argument_of(*stmt);
        } else if (name == "error" || name == "warning") {
            rule.messages.push_back(read_message(*stmt, name == "warning"));
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

bool is_supported_with_ancestors(const lysc_node& node) {
    const lysc_node* const parent = lysc_data_parent(&node);
    return is_supported(node) && (parent == nullptr || is_supported_with_ancestors(*parent));
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
    if (own != compiled || !is_supported_with_ancestors(node)) {
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
                rules[&nodes[i]].push_back(read_rule(parsed->exts[use]));
            }
        }
        note_rules(supported_of(configuration_below(sources[i], nullptr)), nodes[i].children,
                   rules);
    }
}

std::vector<const lysc_node*> supported_of(const std::vector<const lys_module*>& modules) {
    std::vector<const lysc_node*> nodes;
    for (const lys_module* const module : modules) {
        const auto of_module = configuration_below(nullptr, module->compiled);
        nodes.insert(nodes.end(), of_module.begin(), of_module.end());
    }
    return supported_of(nodes);
}

}  // namespace

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
