#include "configuration/node_reader.h"

#include <libyang/libyang.h>

#include <algorithm>

#include "errors/did_you_mean.h"
#include "errors/input_error.h"
#include "model/yang_schema.h"
#include "text/printable.h"
#include "text/utf8.h"

namespace {

constexpr std::size_t kManyNames = 12;  // more are no help
constexpr std::size_t kMostLevels = 1000;

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

std::string name_of(const lysc_node* node) {
    return node == nullptr ? "the configuration" : node->name;
}

void require_no_text_slip(const NodeReader& reader, std::size_t offset) {
    const std::string_view text = reader.text();
    const std::size_t begin = text.rfind('\n', offset) + 1;  // 0 in the first line
    for (const char* const mark : {"<<<<<<<", "=======", ">>>>>>>", "|||||||"}) {
        if (text.substr(begin, 7) == mark) {
            reader.refuse(begin, "the mark of a merge conflict; resolve it");
        }
    }
    if (offset < text.size() && static_cast<unsigned char>(text[offset]) >= 0x80U &&
        !excluded_character(text.substr(offset, end_of_character(text, offset) - offset)).empty()) {
        reader.refuse(offset, "a byte that is not UTF-8, perhaps Latin-1; save the file as UTF-8");
    }
}

NodeReader::NodeReader(const ly_ctx& context, const SourceText& file, const ReadOptions& options,
                       std::size_t source, BeginData begin_data)
    : context_(context),
      file_(file),
      format_(format_of(file)),
      options_(options),
      source_(source),
      begin_data_(std::move(begin_data)) {}

void NodeReader::read() {
    format_ == ConfigurationFormat::xml ? read_xml(*this) : read_json(*this);
}

void NodeReader::open(const FileNode& node) {
    if (pending_.is_pending) {
        ++pending_.depth;
        pending_.waiting.emplace_back([this, node] { open(node); });
    } else if (node.schema->nodetype != LYS_LIST) {
        sink_->open(node, {});
    } else {
        pending_.is_pending = true;
        pending_.node = node;
        pending_.missing = key_count(*node.schema);
        pending_.keys.assign(pending_.missing, FileNode{});
        pending_.key_texts.resize(std::max(pending_.key_texts.size(), pending_.missing));
    }
}

void NodeReader::add(const FileNode& node) {
    if (const std::string excluded = excluded_character(node.text); !excluded.empty()) {
        refuse(node.origin.offset, std::string(node.schema->name) + " has the character " +
                                       excluded + ", which is none of YANG's; remove it");
    }
    if (lysc_is_key(node.schema) && take_key(node)) {
        return;
    }
    if (!pending_.is_pending) {
        return sink_->add(node);
    }
    pending_.waiting.emplace_back([this, kept = node, text = std::string(node.text)]() mutable {
        kept.text = text;
        add(kept);
    });
}

/// Whether the key `node` is of the entry that is pending, or of one that is made, and not of one
/// that waits.
bool NodeReader::take_key(const FileNode& node) {
    if (pending_.is_pending && pending_.depth > 0) {
        return false;
    }
    const std::size_t i = key_position(*node.schema);
    if (!pending_.is_pending || pending_.keys[i].schema != nullptr) {
        refuse(node.origin.offset,
               std::string(node.schema->name) + " is given twice; give it once");
    }
    pending_.keys[i] = node;
    pending_.key_texts[i] = node.text;
    pending_.keys[i].text = pending_.key_texts[i];
    if (--pending_.missing == 0) {
        make_entry();
    }
    return true;
}

void NodeReader::make_entry() {
    pending_.is_pending = false;
    sink_->open(pending_.node, pending_.keys);
    for (const auto& make : std::exchange(pending_.waiting, {})) {
        make();
    }
}

void NodeReader::close() {
    if (!pending_.is_pending) {
        return sink_->close();
    }
    if (pending_.depth == 0) {
        require_keys();
    }
    --pending_.depth;
    pending_.waiting.emplace_back([this] { close(); });
}

/// Throws, for the entry that ends has not all its keys.
void NodeReader::require_keys() const {
    const FileNode& first = pending_.keys.front();
    const FileNode& shown = first.schema == nullptr ? pending_.node : first;
    const lysc_node* key = lysc_node_child(pending_.node.schema);
    for (std::size_t i = 0; pending_.keys[i].schema != nullptr; ++i) {
        key = key->next;
    }
    refuse(shown.origin.offset, std::string(pending_.node.schema->name) + " has no " + key->name +
                                    ", which is one of its keys; add it");
}

void NodeReader::note_value(const lysc_node& leaf, std::size_t begin, std::size_t end) {
    if (begin < end && is_secret(leaf)) {
        secrets.emplace_back(begin, end);
    }
}

NamedModule& NodeReader::module(std::string_view name) {
    if (last_module_ != nullptr && last_module_->name == name) {
        return *last_module_;
    }
    const auto [entry, is_new] = modules_.try_emplace(std::string(name));
    NamedModule& named = entry->second;
    last_module_ = &named;
    if (!is_new) {
        return named;
    }
    named.name = name;
    const bool is_xml = format_ == ConfigurationFormat::xml;
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

const lysc_node* NodeReader::find(const lysc_node* parent, NamedModule* named,
                                  std::string_view name, std::size_t offset, UnknownPart& part) {
    if (named != nullptr && named->module == nullptr) {
        part = {nullptr, nullptr, std::string(name)};
        note_other_module(parent, *named, name, offset);
        return nullptr;
    }
    const lys_module& module = named == nullptr ? *parent->module : *named->module;
    const lysc_node* const found = lys_find_child(parent, &module, name.data(), name.size(), 0, 0);
    const bool is_anydata = found != nullptr && (found->nodetype & LYS_ANYDATA) != 0;
    const bool is_known = found != nullptr && (found->flags & LYS_CONFIG_W) != 0;
    if (!is_known || is_anydata) {
        part = {is_known ? found : nullptr, &module, std::string(name)};
    }
    if (is_known) {
        return found;
    }
    if (!options_.ignore_unknown) {
        refuse_unknown(parent, module, name, found, offset);
    }
    std::string path = "/" + std::string(name);
    for (const lysc_node* node = parent; node != nullptr; node = lysc_data_parent(node)) {
        path.insert(0, node->name).insert(0, "/");
    }
    unknown_data.unknown.push_back(file_.name() + ":" + std::to_string(file_.line_of(offset)) +
                                   ": " + path);
    return nullptr;
}

void NodeReader::note_other_module(const lysc_node* parent, NamedModule& named,
                                   std::string_view name, std::size_t offset) {
    const lys_module* const nearest = named.nearest;
    const bool is_slip = nearest != nullptr &&
                         lys_find_child(parent, nearest, name.data(), name.size(), 0, 0) != nullptr;
    if (is_slip && !options_.ignore_unknown) {
        const bool is_xml = format_ == ConfigurationFormat::xml;
        refuse(offset, "the model has no module \"" + named.name + "\"; did you mean \"" +
                           (is_xml ? nearest->ns : nearest->name) +
                           "\"? --ignore-unknown skips it");
    }
    if (!std::exchange(named.is_noted, true)) {
        unknown_data.modules.push_back(named.name);
    }
}

void NodeReader::refuse_unknown(const lysc_node* parent, const lys_module& module,
                                std::string_view name, const lysc_node* found,
                                std::size_t offset) const {
    if (found != nullptr) {
        refuse(offset, "\"" + std::string(name) + "\" is " + kind_of(*found) +
                           "; remove it, or skip it with --ignore-unknown");
    }
    const std::string of_module = parent == nullptr ? std::string(" of ") + module.name : "";
    refuse(offset, name_of(parent) + " has no node \"" + std::string(name) + "\"" + of_module +
                       help_for_unknown(name, names_below(parent, module)));
}

void NodeReader::require_unknown(const UnknownPart& part, const lys_module* module,
                                 std::size_t offset) const {
    if (part.anydata == nullptr && module != nullptr && module != part.own) {
        refuse(offset, std::string("data of ") + module->name + " inside \"" + part.name +
                           "\", which the model does not describe: a check would miss it; remove "
                           "it, or give the module with --yang-dir");
    }
}

void NodeReader::require_depth(std::size_t levels, std::size_t offset) const {
    if (levels > kMostLevels) {
        refuse(offset, "nested deeper than " + std::to_string(kMostLevels) +
                           " levels; no configuration is");
    }
}

void NodeReader::refuse(std::size_t offset, const std::string& what_is_wrong) const {
    throw InputError(file_.location(offset), what_is_wrong);
}
