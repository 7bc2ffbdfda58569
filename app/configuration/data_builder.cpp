#include "configuration/data_builder.h"

#include <libyang/libyang.h>

#include <new>

#include "errors/input_error.h"
#include "model/leaf_value.h"
#include "model/libyang_version.h"
#include "model/yang_schema.h"

namespace {

void set_origin(lyd_node& node, const FileNode& from) {
    node.priv = reinterpret_cast<void*>(mark_of(from.origin));
}

/// Of a node that is made of what the model has, only memory can be lacking.
void require(LY_ERR result) {
    if (result != LY_SUCCESS) {
        throw std::bad_alloc();
    }
}

/// Makes `text` the content of `anydata`: libyang itself takes none that it cannot parse.
void set_content(lyd_node_any& anydata, std::string_view text) {
    const ly_ctx* const context = anydata.schema->module->ctx;
    require(lydict_insert(context, text.data(), text.size(), &anydata.value.str));
    anydata.value_type = LYD_ANYDATA_STRING;
}

}  // namespace

void DataDeleter::operator()(lyd_node* node) const {
    lyd_free_all(node);
}

lyd_node* DataForest::first_below(lyd_node* parent) const {
    return parent == nullptr ? first() : lyd_child(parent);
}

void DataForest::insert(lyd_node* parent, lyd_node* node) {
    if (parent != nullptr) {
        return require(lyd_insert_child(parent, node));
    }
    lyd_node* first = first_.release();
    const LY_ERR result = lyd_insert_sibling(first, node, &first);
    first_.reset(first);
    require(result);
}

void DataForest::remove(lyd_node* node) {
    if (node == first_.get()) {
        static_cast<void>(first_.release());
        first_.reset(node->next);
    }
    lyd_free_tree(node);
}

bool DataForest::validate(const ly_ctx& context) {
    lyd_node* first = first_.release();
    const LY_ERR result = lyd_validate_all(&first, &context, LYD_VALIDATE_NO_STATE, nullptr);
    first_.reset(first);
    return result == LY_SUCCESS;
}

lyd_node* NodeMaker::make(DataForest& forest, lyd_node* parent, const FileNode& node,
                          const std::vector<FileNode>& keys) {
    const lysc_node& schema = *node.schema;
    lyd_node* made = nullptr;
    switch (schema.nodetype) {
        case LYS_CONTAINER:
            require(lyd_new_inner(parent, schema.module, schema.name, 0, &made));
            break;
        case LYS_LIST:
            made = new_list(parent, node, keys);
            break;
        case LYS_LEAF:
        case LYS_LEAFLIST:
            made = new_value(parent, node);
            break;
        default:
            require(new_any(parent, schema, &made));
            set_content(reinterpret_cast<lyd_node_any&>(*made), node.text);
    }
    set_origin(*made, node);
    if (parent == nullptr) {
        forest.insert(nullptr, made);
    }
    return made;
}

std::unique_ptr<lyd_node, DataDeleter> NodeMaker::make_entry(lyd_node* parent, const FileNode& node,
                                                             const std::vector<FileNode>& keys) {
    lyd_node* around = nullptr;  // in which such an entry is found at its place
    if (parent != nullptr) {
        require(lyd_dup_single(parent, nullptr, 0, &around));
    }
    const std::unique_ptr<lyd_node, DataDeleter> owned(around);
    std::unique_ptr<lyd_node, DataDeleter> made(new_list(around, node, keys));
    lyd_unlink_tree(made.get());
    set_origin(*made, node);
    return made;
}

lyd_node* NodeMaker::new_list(lyd_node* parent, const FileNode& node,
                              const std::vector<FileNode>& keys) {
    if (keys.size() > kMostKeys) {
        refuse(node, std::string(node.schema->name) + " has too many keys");
    }
    for (std::size_t i = 0; i < keys.size(); ++i) {
        require_kind(keys[i]);
        texts_[i] = keys[i].text;
    }
    lyd_node* made = nullptr;
    const auto& k = texts_;
    // It reads as many keys as the list has.
    if (lyd_new_list(parent, node.schema->module, node.schema->name, 0, &made, k[0].c_str(),
                     k[1].c_str(), k[2].c_str(), k[3].c_str(), k[4].c_str(), k[5].c_str(),
                     k[6].c_str(), k[7].c_str(), k[8].c_str(), k[9].c_str(), k[10].c_str(),
                     k[11].c_str(), k[12].c_str(), k[13].c_str(), k[14].c_str(),
                     k[15].c_str()) != LY_SUCCESS) {
        for (const FileNode& key : keys) {
            if (!is_value(*key.schema, key.text)) {
                refuse_value(key);
            }
        }
        throw std::bad_alloc();
    }
    lyd_node* key = lyd_child(made);
    for (const FileNode& from : keys) {
        set_origin(*key, from);
        key = key->next;
    }
    return made;
}

lyd_node* NodeMaker::new_value(lyd_node* parent, const FileNode& node) {
    require_kind(node);
    texts_[0] = node.text;
    lyd_node* made = nullptr;
    if (lyd_new_term(parent, node.schema->module, node.schema->name, texts_[0].c_str(), 0, &made) !=
        LY_SUCCESS) {
        refuse_value(node);
    }
    return made;
}

void NodeMaker::require_kind(const FileNode& leaf) const {
    const std::string wrong = wrong_kind(*leaf.schema, leaf.kind, leaf.text);
    if (!wrong.empty()) {
        refuse(leaf, std::string(leaf.schema->name) + " " + wrong);
    }
}

void NodeMaker::refuse_value(const FileNode& leaf) const {
    const std::string name = leaf.schema->name;
    const std::string what = is_secret(*leaf.schema)
                                 ? "the value of " + name + ", which is not shown,"
                                 : "\"" + std::string(leaf.text) + "\"";
    refuse(leaf, what + " is not a value of " + name + allowed_instead(*leaf.schema));
}

void NodeMaker::refuse(const FileNode& node, const std::string& what_is_wrong) const {
    throw InputError(location_of(sources_, node.origin), what_is_wrong);
}

void DataBuilder::open(const FileNode& node, const std::vector<FileNode>& keys) {
    lyd_node* const made = maker_.make(forest_, parent_, node, keys);
    require_new(made, keys.empty() ? node : keys.front());
    parent_ = made;
}

void DataBuilder::add(const FileNode& node) {
    require_new(maker_.make(forest_, parent_, node), node);
}

/// libyang would only find out later, and take long to: it looks through all that are equal for
/// each. At the top, where it has no index of what there is, nothing is looked for.
void DataBuilder::require_new(lyd_node* made, const FileNode& node) const {
    lyd_node* first = nullptr;
    if (parent_ == nullptr || (made->schema->nodetype & (LYS_LIST | LYS_LEAFLIST)) == 0 ||
        lyd_find_sibling_first(lyd_child(parent_), made, &first) != LY_SUCCESS || first == made) {
        return;
    }
    const Origin origin = origin_of(reinterpret_cast<std::uintptr_t>(first->priv));
    maker_.refuse(node, std::string(made->schema->name) + " is given twice, first at line " +
                            std::to_string(location_of(sources_, origin).line) + "; give it once");
}

void DataBuilder::close() {
    parent_ = lyd_parent(parent_);
}
