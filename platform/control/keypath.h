/// Keypaths of nodes, and keys and keypaths as text.
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "confd_lib.h"

namespace local_platform {

struct Node;

/// The keypath of `node`; its texts belong to the tree. Throws PlatformError above MAXDEPTH
/// elements.
void fill_keypath(const Node& node, confd_hkeypath_t& kp);

/// `kp` as confd_pp_kpath() prints it, at any length.
std::string keypath_text(const confd_hkeypath_t& kp);

/// The keys of one list entry as they stand behind the list's name in a path, see confd_maapi.h:
/// in braces, or quoted in brackets when one of them is not addressable. Throws PlatformError
/// above MAXKEYLEN - 1 keys.
std::string keys_text(const std::vector<std::string>& keys);

/// Whether a path with `key` unquoted between its braces names the entry with that key. Every other
/// key makes such a path malformed: an empty one, and one with a blank, tab, line end, brace,
/// double quote or NUL.
bool is_addressable(std::string_view key);

}  // namespace local_platform
