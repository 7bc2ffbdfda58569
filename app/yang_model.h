/// The YANG model: what the platform needs of it, where it uses validation points, and the
/// configurations that it describes.
#pragma once

#include <memory>
#include <string>
#include <unordered_map>
#include <vector>

#include "configuration_file.h"
#include "local_platform.h"

struct ly_ctx;

/// One message of a rule; a word in angle brackets stands for what it names.
struct RuleMessage {
    bool is_warning;
    std::string text;
    std::string remedy;
};

/// One use of a validation point, and what the model says about the rule behind it.
struct ValidationUse {
    std::string point;
    std::string selector;
    bool only_when_changed = false;
    std::string demand;
    std::string reads;
    std::string calls;
    std::vector<RuleMessage> messages;
};

class YangModel {
  public:
    /// Loads every module in `yang_dir`. Throws CannotJudge.
    explicit YangModel(const std::string& yang_dir);

    const std::shared_ptr<const local_platform::SchemaNode>& schema() const { return schema_; }

    /// The uses on `node`, in the model's order.
    const std::vector<ValidationUse>& uses(const local_platform::SchemaNode& node) const;

    /// The configuration in `file` as a tree. Throws CannotJudge when the model does not allow it.
    local_platform::DataTree read(const ConfigurationFile& file) const;

  private:
    struct ContextDeleter {
        void operator()(ly_ctx* context) const;
    };

    std::unique_ptr<ly_ctx, ContextDeleter> context_;
    std::shared_ptr<const local_platform::SchemaNode> schema_;
    std::unordered_map<const local_platform::SchemaNode*, std::vector<ValidationUse>> uses_;
};
