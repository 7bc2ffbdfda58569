/// Data that a configuration holds and a check leaves out.
#pragma once

#include <cstddef>
#include <string>
#include <vector>

struct Skipped {
    std::size_t nodes = 0;
    std::vector<std::string> modules;  ///< their names, or namespaces, in the order of the file
    std::vector<std::string> unknown;  ///< nodes that known modules do not have, "file:line: path"
};
