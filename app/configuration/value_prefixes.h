/// Prefixes inside values: XML binds them to namespaces, the model knows modules.
#pragma once

#include <functional>
#include <map>
#include <optional>
#include <string>
#include <string_view>

struct lysc_node;

/// The module that a prefix is bound to, an empty one to the default namespace's; empty for none.
using ModuleOfPrefix = std::function<std::string(std::string_view prefix)>;

/// Whether values of `leaf`'s type can have prefixes.
bool has_prefixes(const lysc_node& leaf);

/// `value` of `leaf` with module names for its prefixes, as RFC 7951 writes it; nothing when a
/// prefix is bound to no module.
std::optional<std::string> with_module_names(const lysc_node& leaf, const std::string& value,
                                             const ModuleOfPrefix& module_of);

/// `path`, an XPath expression, with module names for its prefixes; nothing when one is bound to
/// none.
std::optional<std::string> path_with_module_names(std::string_view path,
                                                  const ModuleOfPrefix& module_of);

/// A value as XML writes it, and what its prefixes are bound to.
struct PrefixedValue {
    std::string text;
    std::map<std::string, std::string> bindings;
};

/// The value `text` of `leaf` with its module names as prefixes.
PrefixedValue with_prefixes(const lysc_node& leaf, const std::string& text);
