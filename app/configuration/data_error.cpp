#include "configuration/data_error.h"

#include <libyang/libyang.h>

#include <cstdlib>

#include "model/libyang_log.h"
#include "model/libyang_version.h"

namespace {

constexpr int kLists = LYS_LIST | LYS_LEAFLIST;

std::string path_of(const lysc_node& node, LYSC_PATH_TYPE type) {
    const std::unique_ptr<char, decltype(&std::free)> path(lysc_path(&node, type, nullptr, 0),
                                                           std::free);
    return path.get();
}

/// The schema node that libyang logs as `path`, choices and cases counted; null without one.
const lysc_node* schema_at(const ly_ctx& context, const std::string& path) {
    std::pair<const std::string&, const lysc_node*> search{path, nullptr};
    lysc_module_dfs_full(
        ly_ctx_get_module_implemented(&context, path.substr(1, path.find(':') - 1).c_str()),
        [](lysc_node* node, void* data, ly_bool* /*is_done*/) {
            auto& [wanted, found] = *static_cast<decltype(search)*>(data);
            found = wanted == path_of(*node, LYSC_PATH_LOG) ? node : found;
            return LY_SUCCESS;
        },
        &search);
    return search.second;
}

/// An XPath expression of how many instances of `schema`, of a choice how many of its cases, a node
/// has below it.
std::string count_of(const lysc_node& schema) {
    const auto name_of = [](const lysc_node& node) {
        return std::string(node.module->name) + ":" + node.name;
    };
    if (schema.nodetype != LYS_CHOICE) {
        return "count(" + name_of(schema) + ")";
    }
    std::string count = "0";
    for (const lysc_node_case* one = reinterpret_cast<const lysc_node_choice&>(schema).cases;
         one != nullptr; one = reinterpret_cast<const lysc_node_case*>(one->next)) {
        std::string names;
        const lysc_node* child = nullptr;
        while ((child = lys_getnext(child, reinterpret_cast<const lysc_node*>(one), nullptr, 0)) !=
               nullptr) {
            names += (names.empty() ? "" : " or ") + name_of(*child);
        }
        count += " + number(boolean(" + names + "))";
    }
    return "(" + count + ")";
}

/// The first node of `data` that has too few or too many of `schema` below it; null without one.
const lyd_node* offender(const lyd_node* data, const lysc_node& schema) {
    const lysc_node* const above = lysc_data_parent(&schema);
    if (above == nullptr) {
        return nullptr;
    }
    uint32_t least = 1;
    uint32_t most = 1;
    if ((schema.nodetype & kLists) != 0) {
        const auto& list = reinterpret_cast<const lysc_node_list&>(schema);
        const auto& leaf_list = reinterpret_cast<const lysc_node_leaflist&>(schema);
        least = schema.nodetype == LYS_LIST ? list.min : leaf_list.min;
        most = schema.nodetype == LYS_LIST ? list.max : leaf_list.max;
    }
    const std::string count = count_of(schema);
    const std::string path = path_of(*above, LYSC_PATH_DATA) + "[" + count + "<" +
                             std::to_string(least) + " or " + count + ">" + std::to_string(most) +
                             "]";
    ly_set* found = nullptr;
    lyd_find_xpath(data, path.c_str(), &found);
    const lyd_node* const first =
        found == nullptr || found->count == 0 ? nullptr : found->dnodes[0];
    ly_set_free(found, nullptr);
    return first;
}

/// The node that libyang names by `path`, or the nearest above it; of several the second, which is
/// too much. Null when it is at the top of the tree.
const lyd_node* node_at(const lyd_node* data, const std::string& path) {
    lyd_node* found = nullptr;
    lyd_find_path(data, path.c_str(), 0, &found);
    for (const lyd_node* other = found == nullptr ? nullptr : lyd_first_sibling(found);
         other != nullptr; other = other->next) {
        const bool is_same =
            other->schema == found->schema && ((other->schema->nodetype & kLists) == 0 ||
                                               lyd_compare_single(other, found, 0) == LY_SUCCESS);
        if (is_same && found->priv < other->priv) {
            return other;
        }
    }
    return found;
}

/// The mark of `node`, of an entry that of its first key; of a default that of the node around it.
std::uintptr_t mark_of_node(const lyd_node* node) {
    for (; node != nullptr; node = lyd_parent(node)) {
        const bool is_entry = node->schema->nodetype == LYS_LIST && lyd_child(node) != nullptr;
        const void* const mark = is_entry ? lyd_child(node)->priv : node->priv;
        if (mark != nullptr) {
            return reinterpret_cast<std::uintptr_t>(mark);
        }
    }
    return 0;
}

}  // namespace

InputError data_error(const ly_ctx& context, const DataForest& data, const Sources& sources) {
    const ly_err_item* const error = first_error(context);
    const std::string file = sources.front()->name() + ": ";
    if (error == nullptr) {
        return InputError(file + "the model does not allow it; libyang gave no reason");
    }
    std::string message = error->msg;
    message.erase(message.find_last_not_of('.') + 1);
    const auto [path, is_schema, line] = place_of(*error);
    const lyd_node* node = nullptr;
    for (const lysc_node* lacking = is_schema ? schema_at(context, path) : nullptr;
         lacking != nullptr && node == nullptr; lacking = lysc_data_parent(lacking)) {
        node = offender(data.first(), *lacking);
    }
    if (!is_schema && !path.empty() && data.first() != nullptr) {
        node = node_at(data.first(), path);
    }
    const std::string text = message + " (" + path + "); correct it there";
    const std::uintptr_t mark = mark_of_node(node);
    return mark == 0 ? InputError(file + text)
                     : InputError(location_of(sources, origin_of(mark)), text);
}
