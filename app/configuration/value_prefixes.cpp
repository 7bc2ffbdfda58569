#include "configuration/value_prefixes.h"

#include <libyang/libyang.h>
#include <libyang/plugins_types.h>

#include <algorithm>
#include <cctype>

namespace {

constexpr const char* kBlanks = " \t\r\n";

const lysc_type& type_of(const lysc_node& leaf) {
    return leaf.nodetype == LYS_LEAF ? *reinterpret_cast<const lysc_node_leaf&>(leaf).type
                                     : *reinterpret_cast<const lysc_node_leaflist&>(leaf).type;
}

bool has_prefixes(const lysc_type& type) {
    switch (type.basetype) {
        case LY_TYPE_IDENT:
        case LY_TYPE_INST:
            return true;
        case LY_TYPE_LEAFREF:
            return has_prefixes(*reinterpret_cast<const lysc_type_leafref&>(type).realtype);
        case LY_TYPE_UNION: {
            const auto* const types = reinterpret_cast<const lysc_type_union&>(type).types;
            return std::any_of(types, types + LY_ARRAY_COUNT(types),
                               [](const lysc_type* one) { return has_prefixes(*one); });
        }
        default:
            return type.plugin->store == lyplg_type_store_xpath10;
    }
}

bool is_name_char(char c) {
    return std::isalnum(static_cast<unsigned char>(c)) != 0 || c == '_' || c == '-' || c == '.' ||
           (static_cast<unsigned char>(c) & 0x80U) != 0;
}

std::optional<std::string> identity_with_module_name(const std::string& value,
                                                     const ModuleOfPrefix& module_of) {
    const std::size_t begin = std::min(value.find_first_not_of(kBlanks), value.size());
    const std::string name = value.substr(begin, value.find_last_not_of(kBlanks) + 1 - begin);
    const std::size_t colon = name.find(':');
    const bool is_bare = colon == std::string::npos;
    const std::string module = module_of(is_bare ? "" : std::string_view(name).substr(0, colon));
    if (module.empty()) {
        return std::nullopt;
    }
    return module + ":" + name.substr(is_bare ? 0 : colon + 1);
}

/// Reads a path in parts: names, which `part` gets with the prefix they have, and what stands
/// between them, strings whole.
template <typename Name, typename Other>
void for_each_part(std::string_view path, Name name, Other other) {
    char quote = '\0';
    for (std::size_t i = 0; i < path.size();) {
        std::size_t end = i;
        while (quote == '\0' && end < path.size() && is_name_char(path[end])) {
            ++end;
        }
        if (end == i) {
            const char c = path[i++];
            quote = quote == c ? '\0' : quote == '\0' && (c == '"' || c == '\'') ? c : quote;
            other(c);
            continue;
        }
        const bool has_prefix = path.substr(end, 1) == ":" && path.substr(end, 2) != "::";
        const std::string_view prefix = path.substr(i, has_prefix ? end - i : 0);
        i = has_prefix ? end + 1 : i;
        end = std::max(i, end);
        while (end < path.size() && is_name_char(path[end])) {
            ++end;
        }
        name(prefix, path.substr(i, end - i));
        i = end;
    }
}

/// RFC 7951 names a module only where it changes from one step to the next.
std::string instance_with_module_names(std::string_view path) {
    std::string result;
    std::string current;
    const auto add_name = [&](std::string_view prefix, std::string_view name) {
        if (!prefix.empty() && prefix != current) {
            current = prefix;
            result += current + ":";
        }
        result += name;
    };
    for_each_part(path, add_name, [&](char c) { result += c; });
    return result;
}

/// XML names the module of every node.
std::string instance_with_every_module_name(std::string_view path) {
    std::string result;
    std::string current;
    const auto add_name = [&](std::string_view prefix, std::string_view name) {
        current = prefix.empty() ? current : std::string(prefix);
        const bool is_node =
            !name.empty() && std::isdigit(static_cast<unsigned char>(name[0])) == 0 && name != ".";
        result.append(is_node ? current + ":" : "").append(name);
    };
    for_each_part(path, add_name, [&](char c) { result += c; });
    return result;
}

}  // namespace

bool has_prefixes(const lysc_node& leaf) {
    return has_prefixes(type_of(leaf));
}

std::optional<std::string> path_with_module_names(std::string_view path,
                                                  const ModuleOfPrefix& module_of) {
    std::string result;
    bool is_bound = true;
    const auto add_name = [&](std::string_view prefix, std::string_view name) {
        const std::string module = prefix.empty() ? "" : module_of(prefix);
        is_bound = is_bound && (prefix.empty() || !module.empty());
        result.append(prefix.empty() ? "" : module + ":").append(name);
    };
    for_each_part(path, add_name, [&](char c) { result += c; });
    return is_bound ? std::optional(result) : std::nullopt;
}

std::optional<std::string> with_module_names(const lysc_node& leaf, const std::string& value,
                                             const ModuleOfPrefix& module_of) {
    const lysc_type* type = &type_of(leaf);
    if (type->basetype == LY_TYPE_LEAFREF) {
        type = reinterpret_cast<const lysc_type_leafref*>(type)->realtype;
    }
    if (type->basetype == LY_TYPE_IDENT) {
        return identity_with_module_name(value, module_of);
    }
    const std::optional<std::string> as_path = path_with_module_names(value, module_of);
    const auto as_instance =
        as_path ? std::optional(instance_with_module_names(*as_path)) : std::nullopt;
    if (type->basetype != LY_TYPE_UNION) {
        return type->basetype == LY_TYPE_INST ? as_instance : as_path;
    }
    // What a union's value is depends on which of its types takes it.
    const auto as_identity = identity_with_module_name(value, module_of);
    for (const auto& [text, base] :
         {std::pair(as_identity, LY_TYPE_IDENT), std::pair(as_instance, LY_TYPE_INST)}) {
        const lysc_type* real = nullptr;
        const LY_ERR result = text ? lyd_value_validate(leaf.module->ctx, &leaf, text->c_str(),
                                                        text->size(), nullptr, &real, nullptr)
                                   : LY_EVALID;
        if ((result == LY_SUCCESS || result == LY_EINCOMPLETE) && real->basetype == base) {
            return text;
        }
    }
    return value;
}

PrefixedValue with_prefixes(const lysc_node& leaf, const std::string& text) {
    if (!has_prefixes(leaf)) {
        return {text, {}};
    }
    const ly_ctx* const context = leaf.module->ctx;
    const lysc_type* type = &type_of(leaf);
    lyd_value_validate(context, &leaf, text.c_str(), text.size(), nullptr, &type, nullptr);
    const bool has_names = type->basetype == LY_TYPE_IDENT || type->basetype == LY_TYPE_INST ||
                           type->plugin->store == lyplg_type_store_xpath10;
    if (!has_names) {
        return {text, {}};
    }
    PrefixedValue value{
        type->basetype == LY_TYPE_INST ? instance_with_every_module_name(text) : text, {}};
    path_with_module_names(value.text, [&](std::string_view prefix) {
        std::string name(prefix);
        const lys_module* const module = ly_ctx_get_module_implemented(context, name.c_str());
        if (module != nullptr) {
            value.bindings[name] = module->ns;
        }
        return name;
    });
    return value;
}
