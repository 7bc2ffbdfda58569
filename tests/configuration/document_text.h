/// Documents as JSON, for a test to compare.
#pragma once

#include <libyang/libyang.h>

#include <algorithm>
#include <cctype>
#include <string>
#include <vector>

#include "configuration/document.h"

/// What is below `node`, without blanks, the entries of a list behind its first one. A number is
/// what has digits only.
inline std::string json_of(const DocumentNode& node) {
    const auto is_entry = [](const lysc_node* schema) {
        return schema != nullptr && (schema->nodetype & (LYS_LIST | LYS_LEAFLIST)) != 0;
    };
    std::vector<std::pair<const lysc_node*, std::string>> members;
    for (const DocumentNode* child = node.first_child; child != nullptr; child = child->next) {
        const lysc_node* const schema = child->schema;
        if (schema == nullptr) {
            members.emplace_back(schema, child->text);
            continue;
        }
        std::string value(child->text);
        if ((schema->nodetype & (LYS_LEAF | LYS_LEAFLIST)) == 0) {
            value = json_of(*child);
        } else if (!std::all_of(value.begin(), value.end(), ::isdigit)) {
            value = "\"" + value + "\"";
        }
        const auto same = std::find_if(members.begin(), members.end(), [&](const auto& member) {
            return is_entry(schema) && member.first == schema;
        });
        if (same != members.end()) {
            same->second.insert(same->second.size() - 1, "," + value);
            continue;
        }
        const bool is_qualified = node.schema == nullptr || node.schema->module != schema->module;
        members.emplace_back(
            schema, "\"" + (is_qualified ? std::string(schema->module->name) + ":" : "") +
                        schema->name + "\":" + (is_entry(schema) ? "[" + value + "]" : value));
    }
    std::string text;
    for (const auto& [schema, member] : members) {
        text += (text.empty() ? "" : ",") + member;
    }
    return "{" + text + "}";
}

inline std::string json_of(const Document& document) {
    return json_of(document.root());
}
