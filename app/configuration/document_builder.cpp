#include "configuration/document_builder.h"

#include <libyang/libyang.h>

#include <algorithm>
#include <limits>

#include "configuration/source_text.h"
#include "errors/did_you_mean.h"
#include "errors/input_error.h"

namespace {

constexpr std::size_t kManyNames = 12;  // more are no help

std::shared_ptr<DocumentSource> make_source(ConfigurationFile file) {
    if (file.bytes.size() > std::numeric_limits<std::int32_t>::max()) {
        throw InputError(file.name + ": is 2 GiB or larger; check it in parts");
    }
    return std::make_shared<DocumentSource>(std::move(file));
}

/// The names of the configuration's nodes below `parent`; of `module` at the top.
std::vector<std::string> names_below(const lysc_node* parent, const lys_module& module) {
    std::vector<std::string> names;
    const lysc_node* child = nullptr;
    while ((child = lys_getnext(child, parent, parent == nullptr ? module.compiled : nullptr, 0)) !=
           nullptr) {
        if ((child->flags & LYS_CONFIG_W) != 0) {
            names.emplace_back(child->name);
        }
    }
    return names;
}

std::string help_for_unknown(std::string_view name, const std::vector<std::string>& known) {
    const std::string nearest = nearest_name(name, known);
    std::string help = "; ";
    if (!nearest.empty()) {
        help += "did you mean \"" + nearest + "\"? ";
    } else if (known.size() <= kManyNames) {
        help += "known there:";
        for (const std::string& one : known) {
            help += " " + one;
        }
        help += "; ";
    }
    return help + "--ignore-unknown skips it";
}

const char* kind_of(const lysc_node& node) {
    switch (node.nodetype) {
        case LYS_RPC:
        case LYS_ACTION:
            return "an operation";
        case LYS_NOTIF:
            return "a notification";
        default:
            return "state data, not configuration";
    }
}

}  // namespace

std::string name_of(const DocumentNode& node) {
    return node.schema == nullptr ? "the configuration" : node.schema->name;
}

DocumentBuilder::DocumentBuilder(const ly_ctx& context, ConfigurationFile file,
                                 const ReadOptions& options)
    : context_(context),
      options_(options),
      source_(make_source(std::move(file))),
      root_(&make_node()),
      document_({source_}, root_) {
    document_.is_edit = options.is_edit;
}

DocumentNode& DocumentBuilder::make_node() {
    return *new (source_->store.arena.allocate(sizeof(DocumentNode), alignof(DocumentNode)))
        DocumentNode();
}

DocumentNode& DocumentBuilder::add(DocumentNode& parent, const lysc_node* schema,
                                   std::size_t offset) {
    DocumentNode& node = make_node();
    node.schema = schema;
    node.parent = &parent;
    node.offset = static_cast<std::uint32_t>(offset);
    (parent.last_child == nullptr ? parent.first_child : parent.last_child->next) = &node;
    parent.last_child = &node;
    return node;
}

NodeAttributes& DocumentBuilder::attributes_of(DocumentNode& node) {
    if (node.attributes == nullptr) {
        source_->store.attributes.push_back(std::make_unique<NodeAttributes>());
        node.attributes = source_->store.attributes.back().get();
    }
    return const_cast<NodeAttributes&>(*node.attributes);
}

std::string_view DocumentBuilder::keep(std::string_view part) {
    const std::string_view whole = text();
    if (part.empty() || (part.data() >= whole.data() && part.data() < whole.end())) {
        return part;
    }
    char* const copy = static_cast<char*>(source_->store.arena.allocate(part.size(), 1));
    std::copy(part.begin(), part.end(), copy);
    return {copy, part.size()};
}

const lysc_node* DocumentBuilder::find(const DocumentNode& parent, const lys_module& module,
                                       std::string_view name, std::size_t offset) const {
    const lysc_node* const found =
        lys_find_child(parent.schema, &module, name.data(), name.size(), 0, 0);
    if (found != nullptr && (found->flags & LYS_CONFIG_W) != 0) {
        return found;
    }
    if (options_.ignore_unknown) {
        return nullptr;
    }
    if (found != nullptr) {
        refuse(offset, "\"" + std::string(name) + "\" is " + kind_of(*found) +
                           "; remove it, or skip it with --ignore-unknown");
    }
    const std::string of_module = parent.schema == nullptr ? std::string(" of ") + module.name : "";
    refuse(offset, name_of(parent) + " has no node \"" + std::string(name) + "\"" + of_module +
                       help_for_unknown(name, names_below(parent.schema, module)));
}

const NamedModule& DocumentBuilder::module(std::string_view name) {
    const auto [entry, is_new] = modules_.try_emplace(std::string(name));
    NamedModule& named = entry->second;
    if (!is_new) {
        return named;
    }
    named.name = name;
    const bool is_xml = source_->file.format == ConfigurationFormat::xml;
    const auto get = is_xml ? ly_ctx_get_module_implemented_ns : ly_ctx_get_module_implemented;
    named.module = get(&context_, named.name.c_str());
    if (named.module == nullptr) {
        std::vector<std::string> known;
        uint32_t index = 0;
        while (const lys_module* const one = ly_ctx_get_module_iter(&context_, &index)) {
            known.emplace_back(is_xml ? one->ns : one->name);
        }
        named.nearest = get(&context_, nearest_name(name, known).c_str());
    }
    return named;
}

SkippedPiece DocumentBuilder::skip_foreign(DocumentNode& parent, const NamedModule& module,
                                           std::string_view name, std::size_t offset) {
    const lys_module* const nearest = module.nearest;
    const bool is_slip = nearest != nullptr && lys_find_child(parent.schema, nearest, name.data(),
                                                              name.size(), 0, 0) != nullptr;
    if (is_slip && !options_.ignore_unknown) {
        refuse(offset, "the model has no module \"" + module.name + "\"; did you mean \"" +
                           (source_->file.format == ConfigurationFormat::xml ? nearest->ns
                                                                             : nearest->name) +
                           "\"? --ignore-unknown skips it");
    }
    auto& modules = document_.unknown_data.modules;
    if (std::find(modules.begin(), modules.end(), module.name) == modules.end()) {
        modules.push_back(module.name);
    }
    return {&parent, nullptr, nullptr, offset, std::string(name)};
}

SkippedPiece DocumentBuilder::skip_unknown(DocumentNode& parent, const lys_module& module,
                                           std::string_view name, std::size_t offset) {
    std::string path = "/" + std::string(name);
    for (const DocumentNode* node = &parent; node->schema != nullptr; node = node->parent) {
        path.insert(0, node->schema->name).insert(0, "/");
    }
    const Location at = SourceText(source_->file.name, source_->file.bytes).location(offset);
    document_.unknown_data.unknown.push_back(at.file + ":" + std::to_string(at.line) + ": " + path);
    return {&parent, nullptr, &module, offset, std::string(name)};
}

void DocumentBuilder::count_skipped(const SkippedPiece& piece) {
    document_.unknown_data.nodes += piece.schema == nullptr ? 1 : 0;
}

void DocumentBuilder::require_foreign(const SkippedPiece& piece, const lys_module* module,
                                      std::size_t offset) const {
    if (piece.schema == nullptr && module != nullptr && module != piece.own) {
        refuse(offset, std::string("data of ") + module->name + " inside \"" + piece.name +
                           "\", which the model does not describe: a check would miss it; remove "
                           "it, or give the module with --yang-dir");
    }
}

DocumentNode& DocumentBuilder::end_skipped(const SkippedPiece& piece, std::size_t end) {
    DocumentNode& node = add(*piece.parent, piece.schema, piece.begin);
    node.text = text().substr(piece.begin, end - piece.begin);
    return node;
}

void DocumentBuilder::refuse(std::size_t offset, const std::string& what_is_wrong) const {
    throw InputError(SourceText(source_->file.name, source_->file.bytes).location(offset),
                     what_is_wrong);
}
