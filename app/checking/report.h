/// What a check found.
#pragma once

#include <algorithm>
#include <cstddef>
#include <string>
#include <vector>

enum class Severity { error, warning };

/// A leaf that a rule read before it refused.
struct ReadValue {
    const char* datastore;  ///< "candidate" or "running"
    std::string leaf;       ///< in the operator's words
    std::string value;
};

struct Finding {
    Severity severity;
    std::string selector;
    std::string path;   ///< as keypath printing gives it
    std::string place;  ///< the same in the operator's words: "router vrrp interface l3-vlan10 ..."
    std::string message;
    std::vector<ReadValue> values;
};

struct Report {
    std::string candidate;               ///< the file's name
    std::string running;                 ///< the running configuration's; empty for an empty one
    std::vector<std::string> selectors;  ///< of the rules that were run, in the model's order
    std::size_t requests = 0;
    std::vector<Finding> findings;
    std::string failure;  ///< why the candidate could not be judged; empty when it was

    std::size_t count(Severity severity) const {
        return static_cast<std::size_t>(std::count_if(
            findings.begin(), findings.end(),
            [severity](const Finding& finding) { return finding.severity == severity; }));
    }
};
