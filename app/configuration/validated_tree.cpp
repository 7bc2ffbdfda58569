#include "configuration/validated_tree.h"

#include <libyang/libyang.h>

#include <array>
#include <cstring>

#include "configuration/leaf_value.h"
#include "configuration/model_complaint.h"
#include "configuration/yang_schema.h"

using local_platform::DataTree;
using local_platform::Node;
using local_platform::PlatformError;
using local_platform::TreeBuilder;

namespace {

constexpr std::size_t kMostKeys = 16;

struct DataDeleter {
    void operator()(lyd_node* node) const { lyd_free_all(node); }
};
using Data = std::unique_ptr<lyd_node, DataDeleter>;

/// The library's tree of a document's nodes.
class DataBuilder {
  public:
    DataBuilder(const ly_ctx& context, const ly_ctx& document_context, const Document& document)
        : context_(context), document_context_(document_context), document_(document) {}

    Data build() {
        add_children(document_.root(), nullptr);
        return std::move(data_);
    }

  private:
    void add_children(const DocumentNode& from, lyd_node* parent) {
        for (const DocumentNode* node = from.first_child; node != nullptr; node = node->next) {
            const bool is_there = parent != nullptr && node->schema != nullptr &&
                                  lysc_is_key(node->schema);  // it came with its entry
            if (!node->is_skipped() && !is_there) {
                add(*node, parent);
            }
        }
    }

    /// The context's own module of that name; mostly the one of the node above.
    const lys_module* module_of(const lysc_node& schema, const lyd_node* parent) const {
        const char* const name = schema.module->name;
        const lys_module* const above = parent == nullptr ? nullptr : parent->schema->module;
        return above != nullptr && std::strcmp(above->name, name) == 0
                   ? above
                   : ly_ctx_get_module_implemented(&context_, name);
    }

    void add(const DocumentNode& node, lyd_node* parent) {
        const lysc_node& schema = *node.schema;
        lyd_node* made = nullptr;
        switch (schema.nodetype) {
            case LYS_CONTAINER:
                require(lyd_new_inner(parent, module_of(schema, parent), schema.name, 0, &made));
                break;
            case LYS_LIST:
                made = make_entry(node, parent);
                break;
            case LYS_LEAF:
            case LYS_LEAFLIST:
                made = make_value(node, parent);
                break;
            default:
                // What it holds is nothing to the model.
                require(lyd_new_any(parent, module_of(schema, parent), schema.name, nullptr, 1,
                                    LYD_ANYDATA_DATATREE, 0, &made));
        }
        if (parent == nullptr) {
            lyd_node* first = data_.release();
            const LY_ERR result = lyd_insert_sibling(first, made, &first);
            data_.reset(first);
            require(result);
        }
        add_children(node, made);
    }

    lyd_node* make_entry(const DocumentNode& node, lyd_node* parent) {
        std::size_t count = 0;
        for (const lysc_node* key = lysc_node_child(node.schema);
             key != nullptr && lysc_is_key(key); key = key->next) {
            const DocumentNode* const leaf = node.child(key);
            if (leaf == nullptr) {
                refuse(node, std::string(node.schema->name) + " has no " + key->name +
                                 ", which is one of its keys; add it");
            }
            if (count == kMostKeys) {
                refuse(node, std::string(node.schema->name) + " has too many keys");
            }
            require_kind(*leaf);
            keys_[count++] = leaf->text;
        }
        lyd_node* made = nullptr;
        const auto& k = keys_;
        // It reads as many keys as the list has.
        const LY_ERR result = lyd_new_list(
            parent, module_of(*node.schema, parent), node.schema->name, 0, &made, k[0].c_str(),
            k[1].c_str(), k[2].c_str(), k[3].c_str(), k[4].c_str(), k[5].c_str(), k[6].c_str(),
            k[7].c_str(), k[8].c_str(), k[9].c_str(), k[10].c_str(), k[11].c_str(), k[12].c_str(),
            k[13].c_str(), k[14].c_str(), k[15].c_str());
        if (result != LY_SUCCESS) {
            for (const DocumentNode* leaf = node.first_child; leaf != nullptr; leaf = leaf->next) {
                if (leaf->schema != nullptr && lysc_is_key(leaf->schema) &&
                    !is_value(*leaf->schema, leaf->text)) {
                    refuse_value(*leaf);
                }
            }
            require(result);
        }
        return made;
    }

    lyd_node* make_value(const DocumentNode& node, lyd_node* parent) {
        require_kind(node);
        value_ = node.text;
        lyd_node* made = nullptr;
        if (lyd_new_term(parent, module_of(*node.schema, parent), node.schema->name, value_.c_str(),
                         0, &made) != LY_SUCCESS) {
            refuse_value(node);
        }
        return made;
    }

    void require_kind(const DocumentNode& leaf) const {
        const std::string wrong = wrong_kind(*leaf.schema, leaf.kind, leaf.text);
        if (!wrong.empty()) {
            refuse(leaf, std::string(leaf.schema->name) + " " + wrong);
        }
    }

    [[noreturn]] void refuse_value(const DocumentNode& leaf) const {
        const std::string name = leaf.schema->name;
        const std::string what = is_secret(*leaf.schema)
                                     ? "the value of " + name + ", which is not shown,"
                                     : "\"" + std::string(leaf.text) + "\"";
        refuse(leaf, what + " is not a value of " + name + allowed_instead(*leaf.schema));
    }

    [[noreturn]] void refuse(const DocumentNode& node, const std::string& what_is_wrong) const {
        throw InputError(document_.location_of(node), what_is_wrong);
    }

    void require(LY_ERR result) const {
        if (result != LY_SUCCESS) {
            throw model_complaint(context_, document_context_, document_);
        }
    }

    const ly_ctx& context_;
    const ly_ctx& document_context_;
    const Document& document_;
    Data data_;
    std::array<std::string, kMostKeys> keys_;
    std::string value_;
};

/// A node of the platform's tree, to add others to; a container that is there only to hold nodes is
/// made when it holds one.
class Place {
  public:
    explicit Place(Node& node) : node_(&node) {}
    Place(Place& parent, const char* name) : parent_(&parent), name_(name) {}

    Node& node(TreeBuilder& builder) {
        if (node_ == nullptr) {
            node_ = &builder.add(parent_->node(builder), name_);
        }
        return *node_;
    }

  private:
    Node* node_ = nullptr;
    Place* parent_ = nullptr;
    const char* name_ = nullptr;
};

/// Adds what the platform keeps of the library's tree, and frees its list entries as they are
/// added: the two trees of a large configuration would take twice the memory.
class TreeFiller {
  public:
    explicit TreeFiller(TreeBuilder& builder) : builder_(builder) {}

    void add_siblings(lyd_node* first, Place& parent) {
        for (lyd_node *node = first, *next = nullptr; node != nullptr; node = next) {
            next = node->next;
            // A key came with its entry.
            if (is_supported(*node->schema) && !lysc_is_key(node->schema)) {
                add(*node, parent);
            }
            if (node->schema->nodetype == LYS_LIST && node->parent != nullptr) {
                lyd_free_tree(node);
            }
        }
    }

  private:
    void add(const lyd_node& node, Place& parent) {
        const lysc_node& schema = *node.schema;
        if (schema.nodetype == LYS_LEAF) {
            builder_.add(parent.node(builder_), schema.name, lyd_get_value(&node));
            return;
        }
        Place place = is_nonpresence_container(schema) ? Place(parent, schema.name)
                                                       : Place(made(node, parent));
        add_siblings(lyd_child(&node), place);
    }

    Node& made(const lyd_node& node, Place& parent) {
        Node& above = parent.node(builder_);
        if (node.schema->nodetype != LYS_LIST) {
            return builder_.add(above, node.schema->name);
        }
        keys_.clear();
        for (const lyd_node* key = lyd_child(&node); key != nullptr && lysc_is_key(key->schema);
             key = key->next) {
            keys_.push_back({lyd_get_value(key), 0});
        }
        return builder_.add_entry(above, node.schema->name, keys_);
    }

    TreeBuilder& builder_;
    std::vector<TreeBuilder::Key> keys_;
};

}  // namespace

DataTree validated_tree(const ly_ctx& context, const ly_ctx& document_context,
                        const std::shared_ptr<const local_platform::SchemaNode>& schema,
                        const Document& document) {
    ly_err_clean(const_cast<ly_ctx*>(&context), nullptr);
    lyd_node* data = DataBuilder(context, document_context, document).build().release();
    const LY_ERR result = lyd_validate_all(&data, &context, LYD_VALIDATE_NO_STATE, nullptr);
    const Data owned(data);
    if (result != LY_SUCCESS) {
        throw model_complaint(context, document_context, document);
    }
    TreeBuilder builder(schema);
    try {
        Place top(builder.root());
        TreeFiller(builder).add_siblings(data, top);
    } catch (const PlatformError& error) {
        throw InputError(document.name() + ": " + error.what());
    }
    return std::move(builder).build();
}
