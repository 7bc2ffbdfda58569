/// The module that netconfd loads for router-vrrp: it has the plug-in check every commit.
#include <yuma/agt/agt_commit_validate.h>
#include <yuma/agt/agt_util.h>
#include <yuma/ncx/cfg.h>
#include <yuma/ncx/log.h>
#include <yuma/ncx/ncx_appinfo.h>
#include <yuma/ncx/ncxmod.h>
#include <yuma/ncx/rpc_err.h>

#include <algorithm>
#include <deque>
#include <map>

#include "checking/requests.h"
#include "files/key_file.h"
#include "model/type_name.h"

using local_platform::DataTree;
using local_platform::Node;
using local_platform::NodeKind;
using local_platform::SchemaNode;
using local_platform::TreeBuilder;

namespace {

const auto* const kModule = reinterpret_cast<const xmlChar*>("router-vrrp");
const auto* const kOpaque = reinterpret_cast<const xmlChar*>("opaque");
const auto* const kChanged = reinterpret_cast<const xmlChar*>("only-when-changed");

/// The server's texts are of another type than those of the environment.
std::string text_of(const void* text) {
    return text == nullptr ? std::string() : static_cast<const char*>(text);
}

xmlChar* server_text(const std::string& text) {
    return reinterpret_cast<xmlChar*>(const_cast<char*>(text.c_str()));
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

/// The uses of validation points at `object`.
std::vector<Rule> rules_of(obj_template_t* object) {
    std::vector<Rule> rules;
    const dlq_hdr_t* const uses = obj_get_appinfoQ(object);
    for (const void* one = dlq_firstEntry(uses); one != nullptr; one = dlq_nextEntry(one)) {
        const auto& use = *static_cast<const ncx_appinfo_t*>(one);
        if (text_of(use.prefix) != "vp" || text_of(use.name) != "validate") {
            continue;
        }
        const auto* const opaque = ncx_find_appinfo(use.appinfoQ, nullptr, kOpaque);
        Rule& rule = rules.emplace_back();
        rule.point = text_of(use.value);
        rule.name = text_of(opaque == nullptr ? nullptr : opaque->value);
        rule.only_when_changed = ncx_find_appinfo(use.appinfoQ, nullptr, kChanged) != nullptr;
    }
    return rules;
}

/// A leaf's value; the server would name the leaf itself where its type is empty.
std::string value_text(const val_value_t& value) {
    if (value.obj->objtype != OBJ_TYP_LEAF || value.btyp == NCX_BT_EMPTY) {
        return {};
    }
    const std::unique_ptr<xmlChar, decltype(&std::free)> text(val_make_sprintf_string(&value),
                                                              std::free);
    return text_of(text.get());
}

/// Whether the platform's tree has `value`: a container without presence only while something that
/// it has is in it.
bool is_there(const val_value_t& value) {
    if (is_unsupported(value.obj) || !obj_is_np_container(value.obj)) {
        return !is_unsupported(value.obj);
    }
    auto* child = val_get_first_child(&value);
    while (child != nullptr && !is_there(*child)) {
        child = val_get_next_child(child);
    }
    return child != nullptr;
}

Node& add_entry(const val_value_t& entry, Node& parent, TreeBuilder& builder) {
    std::deque<std::string> texts;
    std::vector<TreeBuilder::Key> keys;
    for (auto* key = val_get_first_index(&entry); key != nullptr; key = val_get_next_index(key)) {
        keys.push_back({texts.emplace_back(value_text(*key->val))});
    }
    return builder.add_entry(parent, text_of(obj_get_name(entry.obj)), keys);
}

/// Adds what is below `parent` to `node`; each node is marked with the server's value.
void add_below(const val_value_t& parent, Node& node, TreeBuilder& builder) {
    for (auto* value = val_get_first_child(&parent); value != nullptr;
         value = val_get_next_child(value)) {
        if (is_there(*value)) {
            Node& added =
                value->obj->objtype == OBJ_TYP_LIST
                    ? add_entry(*value, node, builder)
                    : builder.add(node, text_of(obj_get_name(value->obj)), value_text(*value));
            added.mark = reinterpret_cast<std::uintptr_t>(value);
            add_below(*value, added, builder);
        }
    }
}

/// The plug-in, the key, and what the server's modules describe, loaded once for all commits.
class Checker {
  public:
    Checker() {
        describe_below(nullptr, *schema_);
        if (const std::string file = text_of(std::getenv("VRRP_VALID_KEY_FILE")); !file.empty()) {
            key_ = read_key_file(file);
        }
    }

    /// Hands every finding to `tell`. Throws PlatformError when something cannot be checked.
    template <typename Tell>
    void check(val_value_t& candidate, val_value_t& running, Tell tell) const {
        const DataTree tree = read(candidate);
        const DataTree running_tree = read(running);
        const local_platform::Instance instance(tree, running_tree, key_);
        for (const Request& request : requests_of(rules_, host_, tree, running_tree)) {
            const local_platform::Response response = ask(host_, instance, request);
            if (response.result != CONFD_OK) {
                tell(response.result == CONFD_VALIDATION_WARN, request.rule->name,
                     message_of(response, *request.node),
                     reinterpret_cast<val_value_t*>(request.node->mark));
            }
        }
    }

  private:
    /// Describes what is below `object` as the children of `node`, which stays where it is.
    void describe_below(obj_template_t* object, SchemaNode& node) {
        const std::vector<obj_template_t*> children = configuration_below(object);
        node.children.resize(children.size());
        for (std::size_t i = 0; i < children.size(); ++i) {
            const std::string name = text_of(obj_get_name(children[i]));
            if (node.child_index(name) >= 0) {
                throw local_platform::PlatformError("two modules have a " + name + " in one place");
            }
            node.children[i].name = name;
            describe(children[i], node.children[i]);
        }
    }

    void describe(obj_template_t* object, SchemaNode& node) {
        rules_[&node] = rules_of(object);
        if (object->objtype == OBJ_TYP_LEAF) {
            node.kind = NodeKind::leaf;
            node.type = value_type(object);
            auto* label = typ_first_enumdef(typ_get_base_typdef(obj_get_typdef(object)));
            for (; label != nullptr; label = typ_next_enumdef(label)) {
                node.enums.emplace_back(label->val, text_of(label->name));
            }
            return;
        }
        if (object->objtype == OBJ_TYP_LIST) {
            node.kind = NodeKind::list;
            for (auto* key = obj_first_key(object); key != nullptr; key = obj_next_key(key)) {
                node.keys.push_back(text_of(obj_get_name(key->keyobj)));
            }
        }
        describe_below(object, node);
    }

    DataTree read(const val_value_t& root) const {
        TreeBuilder builder(schema_);
        add_below(root, builder.root(), builder);
        return std::move(builder).build();
    }

    local_platform::Host host_{text_of(std::getenv("VRRP_VALID_PLUGIN"))};
    std::shared_ptr<SchemaNode> schema_ = std::make_shared<SchemaNode>();
    RulesByNode rules_;
    std::optional<local_platform::CryptoKey> key_;
};

std::unique_ptr<Checker> checker;

/// Tells the client what was found in `candidate`. The server keeps an app-tag, which is of the
/// rules or the text below, until it has sent the reply.
status_t validate(ses_cb_t* session, xml_msg_hdr_t* message, val_value_t* candidate) {
    static const std::string kNotChecked = "not-checked";
    status_t result = NO_ERR;
    const auto tell = [&](bool is_warning, const std::string& app_tag, const std::string& text,
                          val_value_t* at) {
        result = is_warning ? result : ERR_NCX_OPERATION_FAILED;
        ncx_errinfo_t info{};
        info.error_app_tag = server_text(app_tag);
        info.error_message = server_text(text);
        agt_record_error_errinfo(session, message, NCX_LAYER_CONTENT, ERR_NCX_OPERATION_FAILED,
                                 nullptr, NCX_NT_NONE, nullptr,
                                 at == nullptr ? NCX_NT_NONE : NCX_NT_VAL, at, &info);
        auto* const told = reinterpret_cast<rpc_err_rec_t*>(dlq_lastEntry(&message->errQ));
        if (is_warning && told != nullptr) {
            told->error_severity = RPC_ERR_SEV_WARNING;
        }
    };
    try {
        checker->check(*candidate, *cfg_get_config_id(NCX_CFGID_RUNNING)->root, tell);
    } catch (const std::exception& error) {
        tell(false, kNotChecked, error.what(), nullptr);
    }
    return result;
}

}  // namespace

extern "C" {

status_t y_router_vrrp_init(const xmlChar* /*module*/, const xmlChar* /*revision*/) {
    ncx_module_t* loaded = nullptr;
    const status_t result =
        ncxmod_load_module(kModule, nullptr, &agt_get_profile()->agt_savedevQ, &loaded);
    return result == NO_ERR ? agt_commit_validate_register(kModule, validate) : result;
}

/// The server does not start when what checks its commits cannot be loaded.
status_t y_router_vrrp_init2() {
    try {
        checker = std::make_unique<Checker>();
        return NO_ERR;
    } catch (const std::exception& error) {
        log_error("\nError: router-vrrp: %s\n", error.what());
        return ERR_NCX_OPERATION_FAILED;
    }
}

void y_router_vrrp_cleanup() {
    agt_commit_validate_unregister(kModule);
    checker.reset();
}
}
