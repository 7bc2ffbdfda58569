#include "configuration/yang_schema.h"

#include <libyang/libyang.h>

#include <algorithm>

#include "errors/input_error.h"

using local_platform::NodeKind;
using local_platform::SchemaNode;

bool is_supported(const lysc_node& node) {
    if ((node.flags & LYS_CONFIG_W) == 0) {
        return false;
    }
    if (node.nodetype != LYS_LIST) {
        return (node.nodetype & (LYS_CONTAINER | LYS_LEAF)) != 0;
    }
    std::size_t keys = 0;
    for (const lysc_node* child = lysc_node_child(&node); child != nullptr && lysc_is_key(child);
         child = child->next) {
        ++keys;
    }
    return keys > 0 && keys < MAXKEYLEN;
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

/// Those of `nodes` that the platform keeps, each told apart from every other by its name.
std::vector<const lysc_node*> kept_of(const std::vector<const lysc_node*>& nodes) {
    std::vector<const lysc_node*> seen;
    std::vector<const lysc_node*> kept;
    for (const lysc_node* const node : nodes) {
        require_own_name(*node, seen);
        seen.push_back(node);
        if (is_supported(*node)) {
            kept.push_back(node);
        }
    }
    return kept;
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
    for (const lysc_node* const child : kept_of(configuration_below(&source, nullptr))) {
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

Rule read_use(const lysp_ext_instance& extension) {
    Rule use;
    use.point = extension.argument;
    for (const lysp_stmt* stmt = extension.child; stmt != nullptr; stmt = stmt->next) {
        const std::string_view name = without_prefix(stmt->stmt);
        if (name == "opaque") {
            use.name = argument_of(*stmt);
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

bool has_uses(const lysc_node& node) {
    LY_ARRAY_COUNT_TYPE i = 0;
    LY_ARRAY_FOR(node.exts, i) {
        if (is_ours(node.exts[i], "validate")) {
            return true;
        }
    }
    return false;
}

/// The uses in the statement that `source` was compiled from; require_plain_uses() sees that there
/// are no others.
void note_uses(const lysc_node& source, const SchemaNode& node, RulesByNode& uses) {
    const auto* const parsed = static_cast<const lysp_node*>(source.priv);
    LY_ARRAY_COUNT_TYPE i = 0;
    LY_ARRAY_FOR(parsed->exts, i) {
        if (is_validate(parsed->exts[i], source.module->ctx)) {
            uses[&node].push_back(read_use(parsed->exts[i]));
        }
    }
}

void note_uses_of(const std::vector<const lysc_node*>& sources,
                  const std::vector<SchemaNode>& nodes, RulesByNode& uses) {
    for (std::size_t i = 0; i < sources.size(); ++i) {
        if (has_uses(*sources[i])) {
            note_uses(*sources[i], nodes[i], uses);
        }
        note_uses_of(kept_of(configuration_below(sources[i], nullptr)), nodes[i].children, uses);
    }
}

bool is_kept_with_ancestors(const lysc_node& node) {
    const lysc_node* const parent = lysc_data_parent(&node);
    return is_supported(node) && (parent == nullptr || is_kept_with_ancestors(*parent));
}

/// Notes in `data`, a vector, each node whose use no walk over the platform's tree would find.
LY_ERR note_unreachable(lysc_node* node, void* data, ly_bool* /*is_done*/) {
    if (has_uses(*node) && !is_kept_with_ancestors(*node)) {
        static_cast<std::vector<const lysc_node*>*>(data)->push_back(node);
    }
    return LY_SUCCESS;
}

void require_reachable_uses(const lys_module& module) {
    std::vector<const lysc_node*> unreachable;
    lysc_module_dfs_full(&module, note_unreachable, &unreachable);
    if (!unreachable.empty()) {
        throw InputError(std::string(module.name) + ": " + unreachable.front()->name +
                         ": a validation point can be used on a container, list or leaf of the "
                         "configuration only; remove vp:validate from it");
    }
}

std::vector<const lysc_node*> kept_of(const std::vector<const lys_module*>& modules) {
    std::vector<const lysc_node*> nodes;
    for (const lys_module* const module : modules) {
        const auto of_module = configuration_below(nullptr, module->compiled);
        nodes.insert(nodes.end(), of_module.begin(), of_module.end());
    }
    return kept_of(nodes);
}

}  // namespace

SchemaNode describe_modules(const std::vector<const lys_module*>& modules) {
    SchemaNode root;
    for (const lysc_node* const node : kept_of(modules)) {
        root.children.push_back(describe(*node));
    }
    return root;
}

RulesByNode collect_uses(const std::vector<const lys_module*>& modules, const SchemaNode& root) {
    RulesByNode uses;
    for (const lys_module* const module : modules) {
        require_reachable_uses(*module);
    }
    note_uses_of(kept_of(modules), root.children, uses);
    return uses;
}
