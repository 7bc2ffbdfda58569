/// The YANG model: what the platform needs of it, where it uses validation points, and the
/// configurations that it describes.
#pragma once

#include <memory>
#include <string>
#include <vector>

#include "configuration/configuration_file.h"
#include "configuration/yang_schema.h"
#include "data_tree.h"

struct ly_ctx;

class YangModel {
  public:
    /// Loads every module in `yang_dir`. Throws CannotCheck.
    explicit YangModel(const std::string& yang_dir);

    const std::shared_ptr<const local_platform::SchemaNode>& schema() const { return schema_; }

    /// The uses on `node`, in the model's order.
    const std::vector<ValidationUse>& uses(const local_platform::SchemaNode& node) const;

    /// The selectors of all uses, in the model's order, each once.
    std::vector<std::string> selectors() const;

    /// The configuration in `file` as a tree. Throws CannotCheck when the model does not allow it.
    local_platform::DataTree read(const ConfigurationFile& file) const;

  private:
    struct ContextDeleter {
        void operator()(ly_ctx* context) const;
    };

    std::unique_ptr<ly_ctx, ContextDeleter> context_;
    std::shared_ptr<const local_platform::SchemaNode> schema_;
    ValidationUses uses_;
};
