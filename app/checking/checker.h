/// A plug-in, a model and a key, loaded once for any number of candidates.
#pragma once

#include <optional>
#include <set>
#include <vector>

#include "checking/rule_walk.h"
#include "configuration/configuration_file.h"

/// What to check with.
struct CheckerOptions {
    std::string plugin_file;
    std::string yang_dir;
    std::string key_file;                 ///< empty for none
    std::vector<std::string> rule_names;  ///< the rules to run; empty for all
    bool difference = false;              ///< whether reports tell what changes
    std::size_t max_findings = 100;       ///< that a report holds of each rule
    std::size_t threads = 1;              ///< that work at a time, at most
    bool is_edit = false;                 ///< candidates are edits even when they do not say so
    bool ignore_unknown = false;          ///< leave out nodes that the model's modules do not have
};

/// What the model says of its rules, in its order.
std::shared_ptr<const std::vector<Rule>> rules_of(const YangModel& model);

class Checker {
  public:
    /// Throws InputError or PlatformError when something cannot be loaded.
    explicit Checker(const CheckerOptions& options);

    /// Gets ready to read on `threads` at a time. Throws InputError.
    void prepare_for(std::size_t threads) const { model_.prepare_for(threads); }

    /// The running configuration in `file`, an empty one for null. Throws InputError.
    Configuration read_running(const std::shared_ptr<SourceText>& file) const;

    /// The names of the rules that it runs, in the model's order.
    std::vector<std::string> rule_names() const;

    /// Checks the configuration in `candidate`, or what it makes of `running` when it is an edit,
    /// against `running`, on any thread, with the help of others up to `threads`. Throws
    /// InputError, and Interrupted when the run was.
    Report check(const std::shared_ptr<SourceText>& candidate, const Configuration& running,
                 std::size_t threads, bool shows_progress) const;

    /// Ends the plug-in, after which nothing can be checked any more. Throws PlatformError when it
    /// does not end well: what it answered may be wrong, too.
    void unload_plugin() { host_.unload(); }

  private:
    YangModel model_;
    std::shared_ptr<const std::vector<Rule>> rules_;
    local_platform::Host host_;
    std::optional<local_platform::CryptoKey> key_;
    CheckerOptions options_;
};
