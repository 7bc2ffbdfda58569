#include "server_schema.h"

#include <yuma/ncx/ncx.h>
#include <yuma/ncx/obj.h>
#include <yuma/ncx/val.h>

#include <algorithm>
#include <map>

#include "configuration/type_name.h"
#include "keypath.h"

using local_platform::NodeKind;
using local_platform::PlatformError;
using local_platform::SchemaNode;
using local_platform::TreeBuilder;

namespace {

std::string text_of(const xmlChar* text) {
    return text == nullptr ? std::string() : reinterpret_cast<const char*>(text);
}

bool is_unsupported(obj_template_t* object) {
    const bool is_list = object->objtype == OBJ_TYP_LIST && obj_first_key(object) != nullptr;
    return !obj_is_config(object) ||
           !(is_list || object->objtype == OBJ_TYP_CONTAINER || object->objtype == OBJ_TYP_LEAF);
}

/// What the platform's tree has below `parent`; without one, at the top of all modules.
std::vector<obj_template_t*> configuration_below(obj_template_t* parent) {
    std::vector<obj_template_t*> objects;
    auto* object = parent == nullptr ? nullptr : obj_first_child_deep(parent);
    for (; object != nullptr; object = obj_next_child_deep(object)) {
        objects.push_back(object);
    }
    auto* module = parent == nullptr ? ncx_get_first_module() : nullptr;
    for (; module != nullptr; module = ncx_get_next_module(module)) {
        object = ncx_get_first_data_object(module);
        for (; object != nullptr; object = ncx_get_next_data_object(module, object)) {
            objects.push_back(object);
        }
    }
    objects.erase(std::remove_if(objects.begin(), objects.end(), is_unsupported), objects.end());
    return objects;
}

confd_vtype value_type(const obj_template_t* leaf) {
    static const std::map<ncx_btype_t, confd_vtype> kTypes{{NCX_BT_INT32, C_INT32},
                                                           {NCX_BT_UINT8, C_UINT8},
                                                           {NCX_BT_BOOLEAN, C_BOOL},
                                                           {NCX_BT_ENUM, C_ENUM_VALUE},
                                                           {NCX_BT_EMPTY, C_XMLTAG}};
    const auto found = kTypes.find(obj_get_basetype(leaf));
    return found != kTypes.end() ? found->second : text_type(text_of(obj_get_type_name(leaf)));
}

Rule read_rule(const ncx_appinfo_t& use) {
    Rule rule;
    rule.point = text_of(use.value);
    for (const void* one = dlq_firstEntry(use.appinfoQ); one != nullptr; one = dlq_nextEntry(one)) {
        const auto& part = *static_cast<const ncx_appinfo_t*>(one);
        if (text_of(part.name) == "opaque") {
            rule.name = text_of(part.value);
        }
        rule.only_when_changed |= text_of(part.name) == "only-when-changed";
    }
    return rule;
}

/// Describes `object` as `node`, which stays where it is.
void describe(obj_template_t* object, SchemaNode& node, ServerSchema& schema) {
    const dlq_hdr_t* const uses = object == nullptr ? nullptr : obj_get_appinfoQ(object);
    const void* one = uses == nullptr ? nullptr : dlq_firstEntry(uses);
    for (; one != nullptr; one = dlq_nextEntry(one)) {
        const auto& use = *static_cast<const ncx_appinfo_t*>(one);
        if (text_of(use.prefix) == "vp" && text_of(use.name) == "validate") {
            schema.rules[&node].push_back(read_rule(use));
        }
    }
    if (object != nullptr && object->objtype == OBJ_TYP_LEAF) {
        node.kind = NodeKind::leaf;
        node.type = value_type(object);
        auto* label = node.type == C_ENUM_VALUE
                          ? typ_first_enumdef(typ_get_base_typdef(obj_get_typdef(object)))
                          : nullptr;
        for (; label != nullptr; label = typ_next_enumdef(label)) {
            node.enums.emplace_back(label->val, text_of(label->name));
        }
        return;
    }
    if (object != nullptr && object->objtype == OBJ_TYP_LIST) {
        node.kind = NodeKind::list;
        for (auto* key = obj_first_key(object); key != nullptr; key = obj_next_key(key)) {
            node.keys.push_back(text_of(obj_get_name(key->keyobj)));
        }
    }
    const std::vector<obj_template_t*> children = configuration_below(object);
    node.children.resize(children.size());
    for (std::size_t i = 0; i < children.size(); ++i) {
        const std::string name = text_of(obj_get_name(children[i]));
        if (node.child_index(name) >= 0) {
            throw PlatformError("two modules have a node " + name + " in one place");
        }
        node.children[i].name = name;
        schema.nodes[children[i]] = &node.children[i];
        describe(children[i], node.children[i], schema);
    }
}

std::string value_text(const val_value_t& value) {
    if (value.btyp == NCX_BT_EMPTY) {
        return {};  // the server would name the leaf
    }
    const std::unique_ptr<xmlChar, decltype(&std::free)> text(val_make_sprintf_string(&value),
                                                              std::free);
    return text_of(text.get());
}

std::vector<std::string> keys_of(const val_value_t& entry) {
    std::vector<std::string> keys;
    for (auto* key = val_get_first_index(&entry); key != nullptr; key = val_get_next_index(key)) {
        keys.push_back(value_text(*key->val));
    }
    return keys;
}

using Paths = std::vector<std::pair<std::string, const val_value_t*>>;

/// Adds what is below `parent`, whose path is `path`, to `builder`, and its paths to `paths`.
void add_below(const val_value_t& parent, const std::string& path, const ServerSchema& schema,
               TreeBuilder& builder, Paths& paths) {
    for (auto* value = val_get_first_child(&parent); value != nullptr;
         value = val_get_next_child(value)) {
        const auto known = schema.nodes.find(value->obj);
        if (known == schema.nodes.end()) {
            continue;
        }
        const NodeKind kind = known->second->kind;
        const std::string own =
            path + "/" + known->second->name +
            (kind == NodeKind::list ? local_platform::keys_text(keys_of(*value)) : "");
        // A container without presence is there when something is in it.
        if (!obj_is_np_container(value->obj)) {
            builder.set(own, kind == NodeKind::leaf ? value_text(*value) : "");
        }
        paths.emplace_back(own, value);
        add_below(*value, own, schema, builder, paths);
    }
}

}  // namespace

ServerSchema read_schema() {
    ServerSchema schema;
    const auto root = std::make_shared<SchemaNode>();
    describe(nullptr, *root, schema);
    schema.root = root;
    return schema;
}

ServerData read_data(const ServerSchema& schema, const val_value_t& root) {
    TreeBuilder builder(schema.root);
    Paths paths;
    add_below(root, "", schema, builder, paths);
    ServerData data{std::move(builder).build(), {}};
    for (const auto& [path, value] : paths) {
        data.values[data.tree.find(path)] = value;
    }
    return data;
}
