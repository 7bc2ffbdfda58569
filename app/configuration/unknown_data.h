/// Data that a configuration holds and no check looks at.
#pragma once

#include <algorithm>
#include <cstddef>
#include <string>
#include <vector>

struct UnknownData {
    std::size_t nodes = 0;
    std::vector<std::string> modules;  ///< their names, or namespaces, in the order of the file
    std::vector<std::string> unknown;  ///< nodes that known modules do not have, "file:line: path"

    void add_module(const std::string& module) {
        if (std::find(modules.begin(), modules.end(), module) == modules.end()) {
            modules.push_back(module);
        }
    }

    /// Adds what another file holds.
    void add(const UnknownData& other) {
        nodes += other.nodes;
        for (const std::string& module : other.modules) {
            add_module(module);
        }
        unknown.insert(unknown.end(), other.unknown.begin(), other.unknown.end());
    }
};
