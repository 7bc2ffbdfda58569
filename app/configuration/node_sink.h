/// What a reader of a file hands on.
#pragma once

#include <cstdint>
#include <memory>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "configuration/origin.h"
#include "model/leaf_value.h"

struct lysc_node;

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

struct EditAttributes {
    EditOperation operation = EditOperation::inherited;
    Insertion insertion = Insertion::unset;
    /// Of before and after: names and values of the entry's keys, or a leaf-list's value.
    std::vector<std::pair<std::string, std::string>> anchor;
};

/// A node as a file has it. The text lasts for the call.
struct FileNode {
    const lysc_node* schema;
    Origin origin;
    std::string_view text;  ///< a leaf's value, with module names for its prefixes
    ValueKind kind = ValueKind::text;
    std::shared_ptr<const EditAttributes> attributes = {};  ///< null without any
};

/// Gets the nodes of a file in their order. What it throws ends the reading.
class NodeSink {
  public:
    virtual ~NodeSink() = default;

    /// A container, or the entry of a list with all its `keys` in the model's order.
    virtual void open(const FileNode& node, const std::vector<FileNode>& keys) = 0;
    /// A leaf that is no key, an entry of a leaf-list, or anydata with its text in the file.
    virtual void add(const FileNode& node) = 0;
    /// The end of what was opened last.
    virtual void close() = 0;
};
