/// What the readers of XML and JSON share: a document that grows, guided by the model.
#pragma once

#include <string>
#include <string_view>
#include <unordered_map>

#include "configuration/document.h"

struct ly_ctx;
struct lys_module;

struct ReadOptions {
    bool is_edit = false;         ///< an edit, whether or not the file says so itself
    bool ignore_unknown = false;  ///< skip what a module of the model does not know
};

/// Reads `file`, whose syntax is XML. Throws InputError, naming the place.
Document read_xml(const ly_ctx& context, ConfigurationFile file, const ReadOptions& options);

/// Reads `file`, whose syntax is JSON. Throws InputError, naming the place.
Document read_json(const ly_ctx& context, ConfigurationFile file, const ReadOptions& options);

/// A module as a file names it: by its namespace in XML, by its name in JSON.
struct NamedModule {
    std::string name;
    const lys_module* module = nullptr;   ///< null when the model does not hold it
    const lys_module* nearest = nullptr;  ///< then the one of nearly that name, if any
};

/// A piece of text that the model does not describe, while it is being read.
struct SkippedPiece {
    DocumentNode* parent = nullptr;
    const lysc_node* schema = nullptr;  ///< of anydata, which is kept unchanged; otherwise null
    const lys_module* own = nullptr;    ///< the known module that an unknown node claims to be of
    std::size_t begin = 0;
    std::string name;
};

class DocumentBuilder {
  public:
    DocumentBuilder(const ly_ctx& context, ConfigurationFile file, const ReadOptions& options);

    const ReadOptions& options() const { return options_; }
    std::string_view text() const { return source_->file.bytes; }
    DocumentNode& root() { return *root_; }
    Document& document() { return document_; }

    DocumentNode& add(DocumentNode& parent, const lysc_node* schema, std::size_t offset);
    NodeAttributes& attributes_of(DocumentNode& node);
    /// `part` if it lies in the file's text, otherwise a copy that lives as long as the document.
    std::string_view keep(std::string_view part);

    /// The module that the file names `name`.
    const NamedModule& module(std::string_view name);

    /// The node of the configuration that `module` has as `name` below `parent`; null for one that
    /// is to be skipped. Throws for a name that the module does not have.
    const lysc_node* find(const DocumentNode& parent, const lys_module& module,
                          std::string_view name, std::size_t offset) const;

    /// Begins to skip `name`, of a `module` that the model does not hold. Throws when the nearest
    /// module has a node of that name: the file may mean it.
    SkippedPiece skip_foreign(DocumentNode& parent, const NamedModule& module,
                              std::string_view name, std::size_t offset);
    SkippedPiece skip_unknown(DocumentNode& parent, const lys_module& module, std::string_view name,
                              std::size_t offset);
    /// Counts one node of `piece`.
    void count_skipped(const SkippedPiece& piece);
    /// Throws when a node of `piece` is of a known `module`: a check would miss it.
    void require_foreign(const SkippedPiece& piece, const lys_module* module,
                         std::size_t offset) const;
    DocumentNode& end_skipped(const SkippedPiece& piece, std::size_t end);

    [[noreturn]] void refuse(std::size_t offset, const std::string& what_is_wrong) const;

    Document finish() && { return std::move(document_); }

  private:
    DocumentNode& make_node();

    const ly_ctx& context_;
    ReadOptions options_;
    std::shared_ptr<DocumentSource> source_;
    DocumentNode* root_;
    Document document_;
    std::unordered_map<std::string, NamedModule> modules_;
};

/// The name that a message gives `node`, the root being the configuration.
std::string name_of(const DocumentNode& node);
