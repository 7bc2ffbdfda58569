/// What the readers of XML and JSON share: the model's view of a file's names, and the nodes that
/// are handed on.
#pragma once

#include <functional>
#include <string>
#include <string_view>
#include <unordered_map>
#include <utility>
#include <vector>

#include "configuration/configuration_file.h"
#include "configuration/node_sink.h"
#include "configuration/unknown_data.h"

struct ly_ctx;
struct lys_module;

struct ReadOptions {
    bool is_edit = false;         ///< an edit, whether or not the file says so itself
    bool ignore_unknown = false;  ///< leave out what a module of the model does not know
};

/// Chooses who gets the nodes of a file, once it is known whether they are an edit and what that
/// does with a node that does not say.
using BeginData = std::function<NodeSink&(bool is_edit, EditOperation default_operation)>;

/// A module as a file names it: by its namespace in XML, by its name in JSON.
struct NamedModule {
    std::string name;
    const lys_module* module = nullptr;   ///< null when the model does not hold it
    const lys_module* nearest = nullptr;  ///< then the one of nearly that name, if any
    bool is_noted = false;                ///< among the unknown data
};

/// A part of the file that is read over.
struct UnknownPart {
    const lysc_node* anydata = nullptr;  ///< null for what the model does not describe
    const lys_module* own = nullptr;     ///< the known module that an unknown node claims to be of
    std::string name;
};

class NodeReader {
  public:
    /// `source` is the file's number among the sources of the configuration.
    NodeReader(const ly_ctx& context, const SourceText& file, const ReadOptions& options,
               std::size_t source, BeginData begin_data);

    /// Reads the whole file. Throws InputError, naming the place.
    void read();

    UnknownData unknown_data;
    std::vector<std::pair<std::size_t, std::size_t>> secrets;  ///< where they begin and end

    // For the reader of a syntax:

    const ReadOptions& options() const { return options_; }
    std::string_view text() const { return file_.bytes(); }

    void begin_data(bool is_edit, EditOperation default_operation) {
        sink_ = &begin_data_(is_edit, default_operation);
    }
    void open(const lysc_node& schema, std::size_t offset,
              std::shared_ptr<const EditAttributes> attributes = {}) {
        open({&schema, {offset, source_}, {}, ValueKind::text, std::move(attributes)});
    }
    void add(const lysc_node& schema, std::size_t offset, ValueKind kind, std::string_view text,
             std::shared_ptr<const EditAttributes> attributes = {}) {
        add({&schema, {offset, source_}, text, kind, std::move(attributes)});
    }
    void close();

    /// Notes that the file has a value of `leaf` from `begin` up to `end`.
    void note_value(const lysc_node& leaf, std::size_t begin, std::size_t end);

    /// The module that the file names `name`.
    NamedModule& module(std::string_view name);

    /// The node of the configuration that `module`, null for that of `parent`, has as `name` below
    /// `parent`, null for the top. Null for what begins an unknown part, which `part` then tells
    /// of, as it does of anydata. Throws for a name that the module does not have, and for one that
    /// the nearest module has: the file may mean it.
    const lysc_node* find(const lysc_node* parent, NamedModule* module, std::string_view name,
                          std::size_t offset, UnknownPart& part);
    /// Counts one node of `part`.
    void count(const UnknownPart& part) { unknown_data.nodes += part.anydata == nullptr ? 1 : 0; }
    /// Throws when a node of `part` is of a known `module`: a check would miss it.
    void require_unknown(const UnknownPart& part, const lys_module* module,
                         std::size_t offset) const;

    /// Throws when the file nests deeper, at `offset`, than what handles a tree step by step can
    /// go.
    void require_depth(std::size_t levels, std::size_t offset) const;

    [[noreturn]] void refuse(std::size_t offset, const std::string& what_is_wrong) const;

  private:
    /// An entry whose keys are not all known, and what came before they are.
    struct PendingEntry {
        bool is_pending = false;
        FileNode node{};
        std::size_t missing = 0;  ///< keys
        std::vector<FileNode> keys;
        std::vector<std::string> key_texts;
        std::vector<std::function<void()>> waiting;
        std::size_t depth = 0;  ///< of what is waiting, below the entry
    };

    void open(const FileNode& node);
    void add(const FileNode& node);
    bool take_key(const FileNode& node);
    void make_entry();
    void require_keys() const;
    void note_other_module(const lysc_node* parent, NamedModule& named, std::string_view name,
                           std::size_t offset);
    [[noreturn]] void refuse_unknown(const lysc_node* parent, const lys_module& module,
                                     std::string_view name, const lysc_node* found,
                                     std::size_t offset) const;

    const ly_ctx& context_;
    const SourceText& file_;
    ConfigurationFormat format_;
    ReadOptions options_;
    std::size_t source_;
    BeginData begin_data_;
    NodeSink* sink_ = nullptr;
    PendingEntry pending_;
    std::unordered_map<std::string, NamedModule> modules_;
    NamedModule* last_module_ = nullptr;  ///< that was asked for
};

/// Throws for what tools leave in a text of any syntax, if that is at `offset`: the marks of a
/// merge conflict, and bytes of another encoding.
void require_no_text_slip(const NodeReader& reader, std::size_t offset);

/// Reads a file whose syntax is XML, or JSON. Throw InputError, naming the place.
void read_xml(NodeReader& reader);
void read_json(NodeReader& reader);

/// The name that a message gives `node`, null being the configuration.
std::string name_of(const lysc_node* node);
