/// A plug-in, a model and a key, loaded once for any number of candidates.
#pragma once

#include <optional>
#include <set>

#include "commands.h"
#include "judge.h"

/// A running configuration, parsed once for all candidates.
struct Running {
    std::string name;  ///< empty for an empty one
    local_platform::DataTree tree;
};

class Checker {
  public:
    /// Throws CannotJudge or PlatformError when something cannot be loaded.
    explicit Checker(const JudgeOptions& options);

    /// The running configuration in `file`, an empty one without a file. Throws CannotJudge.
    Running read_running(const std::optional<ConfigurationFile>& file) const;

    /// Judges `candidate` against `running`. Throws CannotJudge.
    Report check(const ConfigurationFile& candidate, const Running& running) const;

  private:
    YangModel model_;
    local_platform::Host host_;
    std::optional<local_platform::CryptoKey> key_;
    std::set<std::string> selectors_;
};

/// The reports in the wanted format; empty when `options` ask for quiet.
std::string format_reports(const std::vector<Report>& reports, const JudgeOptions& options);

/// The exit code of the worst report: not judged before errors, errors before warnings.
int exit_code(const std::vector<Report>& reports, bool accept_warnings);
