#include "configuration/yang_schema.h"

#include <libyang/libyang.h>

#include <algorithm>

#include "errors/cannot_check.h"

using local_platform::NodeKind;
using local_platform::SchemaNode;

namespace {

constexpr std::string_view kExtensionModule = "validation-point";
constexpr std::string_view kEncryptedType = "encrypted-text";

std::string_view without_prefix(std::string_view name) {
    const std::size_t colon = name.find(':');
    return colon == std::string_view::npos ? name : name.substr(colon + 1);
}

/// What the platform holds a leaf's value as. Address types are told by the name of their typedef,
/// as encrypted texts are, since YANG knows them as strings only; every other type is kept as its
/// text.
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
    node.is_encrypted = without_prefix(parsed.type.name) == kEncryptedType;
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
            throw CannotCheck(std::string(child->module->name) + ": " + child->name +
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
        node.is_ordered_by_user = (source.flags & LYS_ORDBY_USER) != 0;
        const lysc_node* child = lysc_node_child(&source);
        for (; child != nullptr && lysc_is_key(child); child = child->next) {
            node.keys.emplace_back(child->name);
        }
    }
    return node;
}

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
void note_uses(const lysc_node& source, const SchemaNode& node, ValidationUses& uses) {
    const auto* const parsed = static_cast<const lysp_node*>(source.priv);
    LY_ARRAY_COUNT_TYPE i = 0;
    LY_ARRAY_FOR(source.exts, i) {
        if (is_validate(source.exts[i])) {
            uses[&node].push_back(read_use(parsed->exts[i]));
        }
    }
}

void note_uses_below(const lysc_node* parent, const lysc_module* module, const SchemaNode& node,
                     std::size_t& index, ValidationUses& uses) {
    const lysc_node* child = nullptr;
    while ((child = lys_getnext(child, parent, module, 0)) != nullptr) {
        const SchemaNode& described = node.children[index++];
        note_uses(*child, described, uses);
        std::size_t first = 0;
        note_uses_below(child, nullptr, described, first, uses);
    }
}

}  // namespace

SchemaNode describe_modules(const std::vector<const lys_module*>& modules) {
    SchemaNode root;
    for (const lys_module* const module : modules) {
        describe_children(nullptr, module->compiled, root);
    }
    return root;
}

ValidationUses collect_uses(const std::vector<const lys_module*>& modules, const SchemaNode& root) {
    ValidationUses uses;
    std::size_t index = 0;
    for (const lys_module* const module : modules) {
        note_uses_below(nullptr, module->compiled, root, index, uses);
    }
    return uses;
}
