/// The keys of list entries.
#pragma once

#include <optional>
#include <string>
#include <vector>

#include "data_tree.h"

namespace local_platform {

/// The position of the list's key `index` among the children of an entry.
std::size_t key_position(const SchemaNode& list, std::size_t index);

/// The canonical texts of an entry's keys; nothing when `keys` do not fit the list.
std::optional<std::vector<std::string>> canonical_keys(const SchemaNode& list,
                                                       std::vector<std::string> keys);

/// `keys` as an entry's text has them.
std::string joined(const std::vector<std::string>& keys);

/// Writes the keys of `entry` to `values`, which has room for them; returns how many.
int read_keys(const Node& entry, confd_value_t* values);

}  // namespace local_platform
