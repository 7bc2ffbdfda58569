/// Data that a configuration holds and a check leaves out.
#pragma once

#include <algorithm>
#include <cstddef>
#include <string>
#include <vector>

struct UnknownData {
    std::size_t nodes = 0;
    std::vector<std::string> modules;  ///< their names, or namespaces, in the order of the file
    std::vector<std::string> unknown;  ///< nodes that known modules do not have, "file:line: path"

    /// What another file holds, besides.
    void add(const UnknownData& other) {
        nodes += other.nodes;
        for (const std::string& module : other.modules) {
            if (std::find(modules.begin(), modules.end(), module) == modules.end()) {
                modules.push_back(module);
            }
        }
        unknown.insert(unknown.end(), other.unknown.begin(), other.unknown.end());
    }
};
