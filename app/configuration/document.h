/// A configuration as its file holds it: a tree of nodes that know where they were read.
#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <memory_resource>
#include <string>
#include <string_view>
#include <vector>

#include "configuration/configuration_file.h"
#include "configuration/source_text.h"
#include "configuration/unknown_data.h"
#include "errors/location.h"

struct lysc_node;

/// How a value is written. XML has texts only.
enum class ValueKind : std::uint8_t { text, string, number, boolean, null };

/// What an edit does with a node (RFC 6241, section 7.2); `inherited` from the node above.
enum class EditOperation : std::uint8_t {
    inherited,
    merge,
    replace,
    create,
    delete_,
    remove,
    none
};

/// Where an edit puts an entry that the user orders (RFC 7950, section 7.8.6).
enum class Insertion : std::uint8_t { unset, first, last, before, after };

/// Metadata, which a check does not look at. An XML attribute; in JSON, on the node that holds the
/// annotated one, the member "@name" or "@".
struct Annotation {
    std::string_view xml_namespace;
    std::string_view name;
    std::string_view value;  ///< in JSON as it is in the file
};

struct NamespaceBinding {
    std::string_view prefix;  ///< empty for the default namespace
    std::string_view uri;
};

/// What few nodes have.
struct NodeAttributes {
    EditOperation operation = EditOperation::inherited;
    Insertion insertion = Insertion::unset;
    std::string_view anchor;  ///< of before and after: the entry's keys, or a value
    std::vector<Annotation> annotations;
    std::vector<NamespaceBinding> namespaces;  ///< in scope where a skipped element is
};

/// A node of the file, or a piece of text that the model does not describe.
struct DocumentNode {
    const lysc_node* schema = nullptr;  ///< null for the root and for a skipped piece
    DocumentNode* parent = nullptr;
    DocumentNode* first_child = nullptr;
    DocumentNode* last_child = nullptr;
    DocumentNode* next = nullptr;
    std::string_view text;  ///< a value, module names for its prefixes; a skipped piece unchanged
    const NodeAttributes* attributes = nullptr;  ///< null for a node without any
    std::uint32_t offset = 0;                    ///< of the node's name in the file
    std::uint8_t source = 0;                     ///< which file of the document
    ValueKind kind = ValueKind::text;

    /// The first child that `wanted` describes; null without one.
    const DocumentNode* child(const lysc_node* wanted) const;
    bool is_skipped() const { return schema == nullptr && parent != nullptr; }
};

/// Where nodes live.
struct NodeStore {
    std::pmr::monotonic_buffer_resource arena;  ///< the nodes, and texts that no file has
    std::vector<std::unique_ptr<NodeAttributes>> attributes;
};

/// A file, and what was read of it.
struct DocumentSource {
    explicit DocumentSource(ConfigurationFile read) : file(std::move(read)) {}

    ConfigurationFile file;
    mutable std::unique_ptr<SourceText> lines;
    NodeStore store;
};

/// What is around the data, and stays when the file is written again.
struct Envelope {
    std::string name;  ///< of the member that holds the data, or the element; empty for none
    std::string head;  ///< of XML: what the file has before the data, without a byte order mark
    std::string tail;  ///< of XML: what it has behind
    std::string default_namespace;  ///< of XML: where the data is
    unsigned depth = 0;             ///< of XML: how many elements are around the data
};

/// The nodes of one file, or what an edit made of two. Copies share them; none changes.
class Document {
  public:
    /// `store` holds the nodes of a document that was not read from one file.
    Document(std::vector<std::shared_ptr<const DocumentSource>> sources, const DocumentNode* root,
             std::shared_ptr<const NodeStore> store = {})
        : sources_(std::move(sources)), root_(root), store_(std::move(store)) {}

    const DocumentNode& root() const { return *root_; }
    ConfigurationFormat format() const { return sources_.front()->file.format; }
    const std::string& name() const { return sources_.front()->file.name; }
    const std::vector<std::shared_ptr<const DocumentSource>>& sources() const { return sources_; }

    /// Whether this is what an edit made of a running configuration.
    bool is_from_edit() const { return sources_.size() > 1; }

    /// Where `node` is: its name; of a list entry that of its first key.
    Location location_of(const DocumentNode& node) const;

    /// The node at `path`, a keypath or one of libyang's data paths; the nearest one above it when
    /// it is not there.
    const DocumentNode* find(std::string_view path) const;

    /// The next node after `node`, which find() found at `path`, that is at `path` too; null
    /// without one.
    static const DocumentNode* find_again(std::string_view path, const DocumentNode& node);

    /// Where the node that find() finds is; unknown for the root.
    Location locate(std::string_view path) const;

    UnknownData unknown_data;
    Envelope envelope;
    bool is_edit = false;
    EditOperation default_operation = EditOperation::merge;  ///< of an edit
    /// Of what an edit made: where the edit holds data that only its module could merge. A check
    /// leaves it out; as a configuration the document is not whole.
    Location unmerged;

  private:
    std::vector<std::shared_ptr<const DocumentSource>> sources_;
    const DocumentNode* root_;
    std::shared_ptr<const NodeStore> store_;
};

/// The first of `first` and its later siblings that `step`, one step of a path, names; null without
/// one.
const DocumentNode* find_among(const DocumentNode* first, std::string_view step);
