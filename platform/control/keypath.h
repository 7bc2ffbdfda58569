/// Keypaths of nodes, and keys and keypaths as text.
#pragma once

#include <string>
#include <string_view>

#include "confd_lib.h"

#pragma GCC visibility push(default)

namespace local_platform {

struct Node;

/// The keypath of `node`; its texts belong to the tree. Throws PlatformError above MAXDEPTH
/// elements.
void fill_keypath(const Node& node, confd_hkeypath_t& kp);

/// `kp` as confd_pp_kpath() prints it, at any length.
std::string keypath_text(const confd_hkeypath_t& kp);

/// A key's text as it stands between braces in a path: quoted where it has to be.
std::string quoted_key(std::string_view text);

}  // namespace local_platform

#pragma GCC visibility pop
