/// The YANG model: what the platform needs of it, where it uses validation points, and the
/// configurations that it describes.
#pragma once

#include <memory>
#include <string>
#include <vector>

#include "configuration/configuration.h"
#include "configuration/document_builder.h"
#include "configuration/yang_context.h"
#include "configuration/yang_schema.h"
#include "data_tree.h"

class YangModel {
  public:
    /// Loads every module in `yang_dir`. Throws InputError.
    explicit YangModel(const std::string& yang_dir);

    const std::shared_ptr<const local_platform::SchemaNode>& schema() const { return schema_; }

    /// The uses on `node`, in the model's order.
    const std::vector<Rule>& uses(const local_platform::SchemaNode& node) const;

    /// The rule_names of all uses, in the model's order, each once.
    std::vector<std::string> rule_names() const;

    /// What `file` holds, its values not yet looked at. Throws InputError for a file that is no
    /// configuration, or holds nodes that the model does not have.
    Document parse(ConfigurationFile file, const ReadOptions& options = {}) const;

    /// The configuration that `file` holds, or makes of `running` when it is an edit. `running` is
    /// null for an empty running configuration, which nobody edits. Throws InputError.
    Configuration candidate(ConfigurationFile file, const ReadOptions& options,
                            const Document* running) const;

    /// The tree of the whole configuration in `file`.
    local_platform::DataTree read(ConfigurationFile file) const {
        return tree(parse(std::move(file)));
    }

    /// Gets ready for `threads` that make trees at a time: what is loaded later might be another
    /// model. Throws InputError.
    void prepare_for(std::size_t threads) const { contexts_->load_for(threads); }

    /// The tree of `document`. Throws InputError when the model does not allow it.
    local_platform::DataTree tree(const Document& document) const;

  private:
    /// The one that the nodes of documents are of.
    const ly_ctx& context() const { return *contexts_->first().context; }

    std::unique_ptr<ContextPool> contexts_;
    std::shared_ptr<const local_platform::SchemaNode> schema_;
    RulesByNode uses_;
};
