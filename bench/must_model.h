/// A configuration under libyang's own validation, with the constraints of one of our modules.
#pragma once

#include <memory>
#include <string>

struct ly_ctx;
struct lyd_node;

class MustModel {
  public:
    /// Loads the models in `yang_dir`, on top of them the deviations that `module` of the
    /// benchmarks makes (none when it is empty), and `configuration`, JSON, not yet validated.
    MustModel(const std::string& yang_dir, const std::string& module,
              const std::string& configuration);

    /// Validates the whole configuration anew.
    bool validate();

  private:
    struct Deleter {
        void operator()(ly_ctx* context) const;
        void operator()(lyd_node* data) const;
    };
    std::unique_ptr<ly_ctx, Deleter> context_;
    std::unique_ptr<lyd_node, Deleter> data_;
};
