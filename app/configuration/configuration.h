/// A configuration that the model allows.
#pragma once

#include <memory>
#include <string>
#include <vector>

#include "configuration/origin.h"
#include "configuration/unknown_data.h"
#include "data_tree.h"
#include "files/source_text.h"

/// The files that a configuration was read from: its own, and behind an edit the running one.
using Sources = std::vector<std::shared_ptr<const SourceText>>;

/// The place of `origin` in `sources`.
inline Location location_of(const Sources& sources, const Origin& origin) {
    return sources[origin.source]->location(origin.offset);
}

struct Configuration {
    Sources sources;  ///< none for an empty configuration without a file
    UnknownData unknown_data;
    local_platform::DataTree tree;  ///< the mark of a leaf or container is that of its Origin
    bool is_edit = false;           ///< made of a running configuration by an edit

    /// The file's name, as the operator gave it; empty without a file.
    std::string name() const { return sources.empty() ? std::string() : sources.front()->name(); }

    /// Where `node` of the tree was read: its name; of a list entry that of its first key. Of a
    /// node that no file has, a default, the nearest one above it.
    Location location_of(const local_platform::Node& node) const;
};
