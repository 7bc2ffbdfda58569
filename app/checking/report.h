/// What a check found.
#pragma once

#include <algorithm>
#include <cstddef>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "configuration/unknown_data.h"
#include "errors/location.h"
#include "files/source_text.h"
#include "model/yang_schema.h"
#include "trees/difference.h"
#include "trees/vrrp.h"

enum class Severity { error, warning };

/// A leaf that a rule read before it refused.
struct ReadValue {
    const char* datastore = "";  ///< "candidate" or "running"
    std::string path;            ///< as keypath printing gives it
    std::string cli_path;        ///< in the operator's words
    std::string value;
    Location location;  ///< in the candidate's or the running file
};

struct Finding {
    Severity severity = Severity::error;
    std::string rule;
    std::string path;  ///< as keypath printing gives it
    std::string
        cli_path;  ///< the same in the operator's words: "router vrrp interface l3-vlan10 ..."
    std::string message;
    std::vector<ReadValue> values;
    std::string note;  ///< why the message may not be the whole truth; empty without a reason
    std::string help;  ///< what to do, from the model
    /// Of the value that has to change where the candidate's file has it, else of the node.
    Location location;
    Location node_location = {};  ///< in the candidate, or in the edit where that holds it
    std::optional<VrrpInstance> instance = {};  ///< that the node is of
    std::string cause = {};  ///< what it has in common with others; empty without a reason
};

/// Findings of a rule that a report only counts.
struct Omitted {
    std::string rule;
    std::size_t errors = 0;
    std::size_t warnings = 0;
};

struct Report {
    std::string candidate;                ///< the file's name
    std::string running;                  ///< the running configuration's; empty for an empty one
    std::vector<std::string> rule_names;  ///< of the rules that were run, in the model's order
    std::shared_ptr<const std::vector<Rule>> rules;  ///< what the model says of them
    std::size_t requests = 0;
    std::vector<Finding> findings;
    std::vector<Omitted> omitted;  ///< those beyond what a report holds of a rule, each rule once
    std::optional<std::vector<Change>> changes;  ///< from running; nothing when not asked for
    std::string failure;  ///< why the candidate could not be checked; empty when it was
    Location failure_at;  ///< where the reason is; unknown when it is not in the file
    UnknownData unknown_data;
    std::vector<VrrpInstance> instances;  ///< of the candidate, in its order
    std::size_t removed_instances = 0;    ///< VRRP instances of running that the candidate lacks
    /// That findings are in, and changes; none without any.
    std::vector<std::shared_ptr<const SourceText>> sources;
    double seconds = 0;  ///< how long the check took

    /// All findings of `severity`, omitted ones as well.
    std::size_t count(Severity severity) const {
        auto count = static_cast<std::size_t>(std::count_if(
            findings.begin(), findings.end(),
            [severity](const Finding& finding) { return finding.severity == severity; }));
        for (const Omitted& rest : omitted) {
            count += severity == Severity::error ? rest.errors : rest.warnings;
        }
        return count;
    }

    Omitted& omitted_of(const std::string& rule) {
        const auto found = std::find_if(omitted.begin(), omitted.end(),
                                        [&](const Omitted& rest) { return rest.rule == rule; });
        return found != omitted.end() ? *found : omitted.emplace_back(Omitted{rule, 0, 0});
    }
};
