/// What the platform and the host need of the compiled modules.
#pragma once

#include <string>
#include <unordered_map>
#include <vector>

#include "schema_node.h"

struct lys_module;
struct lysc_node;

/// One message of a rule; a word in angle brackets is replaced by what it names.
struct RuleMessage {
    bool is_warning;
    std::string text;
    std::string help;
};

/// A use of a validation point, and what the model says about the rule behind it.
struct Rule {
    std::string file;  ///< of the module that uses it; empty without one
    std::string point;
    std::string name;
    bool only_when_changed = false;
    std::string demand;
    std::string reads;
    std::string calls;
    std::vector<RuleMessage> messages;
};

/// "router-vrrp.yang:217", as much of it as can be found of where the model uses `rule`: libyang
/// keeps no lines.
std::string place_of(const Rule& rule);

/// The rules of each node, in the model's order.
using RulesByNode = std::unordered_map<const local_platform::SchemaNode*, std::vector<Rule>>;

/// The number of keys that the list `node` has.
std::size_t key_count(const lysc_node& node);

/// The position of `key` among the keys of its list.
std::size_t key_position(const lysc_node& key);

/// Whether the platform's tree has what `node` describes: a node of the configuration, unless it is
/// a list with no keys or too many. Everything else is validated by the model alone.
bool is_supported(const lysc_node& node);

/// Whether `node` is a container that is there only to hold nodes. Its context has
/// LY_CTX_SET_PRIV_PARSED set.
bool is_nonpresence_container(const lysc_node& node);

/// Whether the model marks the values of `leaf` as nothing to show.
bool is_secret(const lysc_node& leaf);

/// The supported nodes of all `modules` below one root. Throws InputError when two of them, of
/// different modules, have one path. The modules' context has LY_CTX_SET_PRIV_PARSED set.
local_platform::SchemaNode describe_modules(const std::vector<const lys_module*>& modules);

/// The rules that `modules` bind, on the nodes of `root` that describe_modules() made of them.
/// Throws InputError for a use of a validation point that is lost: on a node that the platform's
/// tree does not have, or under refine, augment, uses or deviation, which libyang applies in part.
RulesByNode collect_rules(const std::vector<const lys_module*>& modules,
                          const local_platform::SchemaNode& root);
