/// A plug-in, a model and a key, loaded once for any number of candidates.
#pragma once

#include <optional>
#include <set>

#include "commands.h"
#include "judge.h"

class Judgement {
  public:
    /// Throws CannotJudge or PlatformError when something cannot be loaded.
    explicit Judgement(const JudgeOptions& options);

    /// Judges `candidate` against `running`, or an empty configuration. Throws CannotJudge.
    Report check(const ConfigurationFile& candidate,
                 const std::optional<ConfigurationFile>& running) const;

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
