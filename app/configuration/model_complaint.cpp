#include "configuration/model_complaint.h"

#include <libyang/libyang.h>

#include <optional>
#include <vector>

namespace {

/// The quoted path in libyang's "Data location "/..."."; empty without one.
std::string_view quoted_path(std::string_view location) {
    const std::size_t open = location.find('"');
    const std::size_t close = location.rfind('"');
    return open >= close ? std::string_view() : location.substr(open + 1, close - open - 1);
}

const lysc_node* children_of(const lysc_node& node) {
    return node.nodetype == LYS_CASE ? reinterpret_cast<const lysc_node_case&>(node).child
                                     : lysc_node_child(&node);
}

/// The node that the schema path "/module:name/name" names, choices and cases counted.
const lysc_node* schema_at(const ly_ctx& context, std::string_view path) {
    const std::size_t colon = path.find(':');
    if (path.empty() || colon == std::string_view::npos) {
        return nullptr;
    }
    const std::string module(path.substr(1, colon - 1));
    const lys_module* const top = ly_ctx_get_module_implemented(&context, module.c_str());
    const lysc_node* node = nullptr;
    const lysc_node* next = top == nullptr ? nullptr : top->compiled->data;
    while (!path.empty()) {
        path.remove_prefix(1);
        const std::string_view step = path.substr(0, path.find('/'));
        path.remove_prefix(step.size());
        const std::string_view name = step.substr(step.find(':') + 1);
        node = next;
        while (node != nullptr && name != node->name) {
            node = node->next;
        }
        if (node == nullptr) {
            return nullptr;
        }
        next = node->nodetype == LYS_CHOICE
                   ? reinterpret_cast<const lysc_node*>(
                         reinterpret_cast<const lysc_node_choice&>(*node).cases)
                   : children_of(*node);
    }
    return node;
}

/// Which case of `choice` describes `node`; null when none does.
const lysc_node* case_of(const lysc_node& choice, const lysc_node& node) {
    const lysc_node* step = &node;
    while (step != nullptr && step->parent != &choice) {
        step = step->parent;
    }
    return step;
}

/// Whether the instance `parent` holds other than what the model demands of `schema` below it.
bool offends(const DocumentNode& parent, const lysc_node& schema) {
    std::size_t count = 0;
    const lysc_node* seen_case = nullptr;
    for (const DocumentNode* node = parent.first_child; node != nullptr; node = node->next) {
        if (node->schema == nullptr) {
            continue;
        }
        if (schema.nodetype == LYS_CHOICE) {
            const lysc_node* const of = case_of(schema, *node->schema);
            count += of != nullptr && of != seen_case ? 1 : 0;
            seen_case = of == nullptr ? seen_case : of;
        } else {
            count += node->schema == &schema ? 1 : 0;
        }
    }
    if (schema.nodetype == LYS_LIST) {
        const auto& list = reinterpret_cast<const lysc_node_list&>(schema);
        return count < list.min || count > list.max;
    }
    if (schema.nodetype == LYS_LEAFLIST) {
        const auto& list = reinterpret_cast<const lysc_node_leaflist&>(schema);
        return count < list.min || count > list.max;
    }
    return count != 1;
}

/// The first instance of the node above `schema` that offends it.
const DocumentNode* offender(const DocumentNode& node, const lysc_node& schema) {
    const lysc_node* const above = lysc_data_parent(&schema);
    if (node.schema == above && !node.is_skipped()) {
        return offends(node, schema) ? &node : nullptr;
    }
    for (const DocumentNode* child = node.first_child; child != nullptr; child = child->next) {
        const DocumentNode* const found = offender(*child, schema);
        if (found != nullptr) {
            return found;
        }
    }
    return nullptr;
}

/// The same; when the node above is not there either, the one that lacks that.
const DocumentNode* offender_or_above(const Document& document, const lysc_node& schema) {
    for (const lysc_node* wanted = &schema; wanted != nullptr; wanted = lysc_data_parent(wanted)) {
        const DocumentNode* const found = offender(document.root(), *wanted);
        if (found != nullptr) {
            return found;
        }
    }
    return &document.root();
}

}  // namespace

InputError model_complaint(const ly_ctx& context, const ly_ctx& document_context,
                           const Document& document) {
    const ly_err_item* item = ly_err_first(&context);
    while (item != nullptr && item->level != LY_LLERR) {  // a warning is not why it refuses
        item = item->next;
    }
    if (item == nullptr) {
        return InputError(document.name() +
                          ": the model does not allow it; libyang gave no reason");
    }
    std::string message = item->msg;
    while (!message.empty() && message.back() == '.') {
        message.pop_back();
    }
    const std::string_view location = item->path == nullptr ? "" : item->path;
    const std::string_view path = quoted_path(location);
    const DocumentNode* node = nullptr;
    const lysc_node* const schema =
        location.rfind("Schema", 0) == 0 ? schema_at(document_context, path) : nullptr;
    if (schema != nullptr) {
        node = offender_or_above(document, *schema);
    } else {
        node = document.find(path);
        if (message.rfind("Duplicate instance", 0) == 0) {
            // The second one is too much.
            const DocumentNode* const again = Document::find_again(path, *node);
            node = again == nullptr ? node : again;
        }
    }
    const std::string text = message + " (" + std::string(path) + "); correct it there";
    if (node == &document.root()) {
        return InputError(document.name() + ": " + text);
    }
    return InputError(document.location_of(*node), text);
}
