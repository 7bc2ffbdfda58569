/// Prefixes inside values: XML binds them to namespaces, the model knows modules.
#pragma once

#include <optional>
#include <string>
#include <utility>
#include <vector>

struct lys_module;
struct lysc_node;

/// Prefixes, the default namespace's an empty one, and the modules that they are bound to.
using BoundPrefixes = std::vector<std::pair<std::string, const lys_module*>>;

/// Whether values of `leaf`'s type may have prefixes.
bool may_have_prefixes(const lysc_node& leaf);

/// `value` of `leaf` with module names for its prefixes, as RFC 7951 writes it; `value` itself when
/// the type does not allow it in any way; nothing when it would with prefixes that are not bound.
std::optional<std::string> with_module_names(const lysc_node& leaf, const std::string& value,
                                             const BoundPrefixes& prefixes);
