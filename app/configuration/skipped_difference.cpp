#include "configuration/skipped_difference.h"

#include <libyang/libyang.h>

#include <map>
#include <nlohmann/json.hpp>
#include <pugixml.hpp>
#include <sstream>

namespace {

struct Piece {
    std::string content;  ///< without the layout
    Location location;
};

/// The pieces of a document by their names; those of one name, as XML has a list's, are one.
using Pieces = std::map<std::string, Piece>;

struct NamedContent {
    std::string name;
    std::string content;
};

/// `text` is a member, "name": value.
NamedContent read_json(std::string_view text) {
    const auto member = nlohmann::json::parse("{" + std::string(text) + "}");
    return {member.begin().key(), member.begin().value().dump()};
}

NamedContent read_xml(std::string_view text) {
    pugi::xml_document document;
    document.load_buffer(text.data(), text.size());
    std::ostringstream content;
    document.save(content, "", pugi::format_raw | pugi::format_no_declaration);
    return {document.document_element().name(), content.str()};
}

/// The way to `node` from the top, in the operator's words.
std::string words_of(const DocumentNode& node) {
    if (node.schema == nullptr) {
        return {};
    }
    std::string words = words_of(*node.parent) + node.schema->name + " ";
    for (const DocumentNode* child = node.first_child; child != nullptr; child = child->next) {
        if (child->schema != nullptr && lysc_is_key(child->schema)) {
            words.append(child->text).append(" ");
        }
    }
    return words;
}

void collect(const Document& document, const DocumentNode& node, Pieces& pieces) {
    for (const DocumentNode* child = node.first_child; child != nullptr; child = child->next) {
        const bool is_piece = child->is_skipped() || (child->schema->nodetype & LYS_ANYDATA) != 0;
        if (!is_piece) {
            collect(document, *child, pieces);
            continue;
        }
        const bool is_json = child->text.front() == '"';
        const NamedContent read = is_json ? read_json(child->text) : read_xml(child->text);
        Piece& piece = pieces[words_of(node) + read.name];
        piece.content += read.content;
        piece.location = document.location_of(*child);
    }
}

void note(ChangeKind kind, const std::string& name, const Location& location,
          std::vector<Change>& changes) {
    Change change;
    change.kind = kind;
    change.path = "/" + name;
    change.node = name + " (not described by the models)";
    change.location = location;
    changes.push_back(std::move(change));
}

}  // namespace

void add_skipped_changes(const Document* running, const Document& candidate,
                         std::vector<Change>& changes) {
    Pieces before;
    Pieces after;
    if (running != nullptr) {
        collect(*running, running->root(), before);
    }
    collect(candidate, candidate.root(), after);
    for (const auto& [name, piece] : before) {
        const auto found = after.find(name);
        if (found == after.end()) {
            note(ChangeKind::removed, name, {}, changes);
        } else if (found->second.content != piece.content) {
            note(ChangeKind::changed, name, found->second.location, changes);
        }
    }
    for (const auto& [name, piece] : after) {
        if (before.count(name) == 0) {
            note(ChangeKind::added, name, piece.location, changes);
        }
    }
}
