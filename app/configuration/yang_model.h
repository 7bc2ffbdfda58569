/// The YANG model: what the platform needs of it, which rules it binds, and the configurations that
/// it describes.
#pragma once

#include <functional>
#include <memory>
#include <string>
#include <vector>

#include "configuration/configuration.h"
#include "configuration/node_reader.h"
#include "model/yang_context.h"
#include "model/yang_schema.h"

class YangModel {
  public:
    /// Loads every module in `yang_dir`. Throws InputError.
    explicit YangModel(const std::string& yang_dir);

    const std::shared_ptr<const local_platform::SchemaNode>& schema() const { return schema_; }

    const RulesByNode& rules() const { return rules_; }

    /// The rules of `node`, in the model's order.
    const std::vector<Rule>& rules(const local_platform::SchemaNode& node) const;

    using VisitRule = std::function<void(const std::string& path, const Rule&)>;

    /// Calls `visit` for every rule of every node, in the model's order.
    void for_each_rule(const VisitRule& visit) const;

    /// The names of all rules, in the model's order, each once.
    std::vector<std::string> rule_names() const;

    /// The configuration in `file`, or what `file`, an edit, makes of `running`; null where an edit
    /// is none. Throws InputError, naming the place, for a file that is no configuration, that the
    /// model does not allow, or that edits an empty configuration.
    Configuration read(const std::shared_ptr<SourceText>& file, const ReadOptions& options = {},
                       const Configuration* running = nullptr) const;

    /// Gets ready for `threads` that read at a time: what is loaded later might be another model.
    /// Throws InputError.
    void prepare_for(std::size_t threads) const { contexts_->load_for(threads); }

  private:
    std::unique_ptr<ContextPool> contexts_;
    std::shared_ptr<const local_platform::SchemaNode> schema_;
    RulesByNode rules_;
};
