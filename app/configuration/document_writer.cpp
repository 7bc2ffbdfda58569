#include "configuration/document_writer.h"

#include <libyang/libyang.h>

#include <algorithm>
#include <unordered_map>

#include "configuration/yang_schema.h"
#include "errors/input_error.h"

namespace {

bool is_empty(const DocumentNode& node) {
    if (node.schema == nullptr || !is_nonpresence_container(*node.schema)) {
        return false;
    }
    const DocumentNode* child = node.first_child;
    while (child != nullptr && is_empty(*child)) {
        child = child->next;
    }
    return child == nullptr;
}

/// Whether the key `one` comes before the key `other` in their list.
bool comes_first(const lysc_node& one, const lysc_node& other) {
    const lysc_node* later = one.next;
    while (later != nullptr && later != &other) {
        later = later->next;
    }
    return later != nullptr;
}

/// Whether text of the file itself is written again.
bool has_own_text(const DocumentNode& node) {
    return node.is_skipped() ||
           (node.schema != nullptr && (node.schema->nodetype & LYS_ANYDATA) != 0) ||
           (node.attributes != nullptr && !node.attributes->annotations.empty());
}

void require_format(const Document& document, const DocumentNode& node,
                    ConfigurationFormat format) {
    const DocumentSource& source = *document.sources()[node.source];
    if (has_own_text(node) && source.file.format != format) {
        throw InputError(document.location_of(node),
                         std::string("this cannot be written as ") +
                             (format == ConfigurationFormat::xml ? "XML" : "JSON") +
                             " without its module; give both configurations in one format");
    }
    for (const DocumentNode* child = node.first_child; child != nullptr; child = child->next) {
        require_format(document, *child, format);
    }
}

}  // namespace

std::vector<const DocumentNode*> children_to_write(const DocumentNode& node) {
    std::vector<std::vector<const DocumentNode*>> groups;
    std::unordered_map<const lysc_node*, std::size_t> group_of;
    for (const DocumentNode* child = node.first_child; child != nullptr; child = child->next) {
        if (is_empty(*child)) {
            continue;
        }
        const auto [group, is_new] = group_of.try_emplace(child->schema, groups.size());
        if (is_new || child->schema == nullptr) {
            groups.push_back({child});
        } else {
            groups[group->second].push_back(child);
        }
    }
    const auto is_key = [](const std::vector<const DocumentNode*>& group) {
        return group.front()->schema != nullptr && lysc_is_key(group.front()->schema);
    };
    const auto keys_end = std::stable_partition(groups.begin(), groups.end(), is_key);
    std::sort(groups.begin(), keys_end, [](const auto& one, const auto& other) {
        return comes_first(*one.front()->schema, *other.front()->schema);
    });
    std::vector<const DocumentNode*> children;
    for (const auto& group : groups) {
        children.insert(children.end(), group.begin(), group.end());
    }
    return children;
}

std::string write_document(const Document& document, const Document& like) {
    require_format(document, document.root(), like.format());
    return like.format() == ConfigurationFormat::xml ? write_xml(document, like.envelope)
                                                     : write_json(document, like.envelope);
}

std::string write_as_running(const Document& candidate, const Document* running) {
    if (candidate.unmerged.is_known()) {
        throw InputError(candidate.unmerged,
                         "the model does not describe this, so it cannot be merged; give the "
                         "module with --yang-dir, or a complete configuration");
    }
    return write_document(candidate, running == nullptr ? candidate : *running);
}
