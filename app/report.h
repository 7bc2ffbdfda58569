/// What a check found.
#pragma once

#include <cstddef>
#include <string>
#include <vector>

enum class Severity { error, warning };

struct Finding {
    Severity severity;
    std::string selector;
    std::string path;  ///< as keypath printing gives it
    std::string message;
};

struct Report {
    std::string candidate;  ///< the file's name
    std::string running;    ///< the running configuration's; empty for an empty one
    std::size_t requests = 0;
    std::vector<Finding> findings;

    std::size_t count(Severity severity) const;
};
