/// Data that a configuration holds and no check looks at.
#pragma once

#include <algorithm>
#include <cstddef>
#include <iterator>
#include <set>
#include <string>
#include <vector>

struct UnknownData {
    std::size_t nodes = 0;
    std::vector<std::string> modules;  ///< their names, or namespaces, in the order of the file
    std::vector<std::string> unknown;  ///< nodes that known modules do not have, "file:line: path"

    /// Adds what another file holds.
    void add(const UnknownData& other) {
        nodes += other.nodes;
        const std::set<std::string> own(modules.begin(), modules.end());
        std::copy_if(other.modules.begin(), other.modules.end(), std::back_inserter(modules),
                     [&](const std::string& module) { return own.count(module) == 0; });
        unknown.insert(unknown.end(), other.unknown.begin(), other.unknown.end());
    }
};
