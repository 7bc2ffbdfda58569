/// The data model, as far as paths and values need it.
#pragma once

#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "confd_lib.h"

namespace local_platform {

enum class NodeKind { container, list, leaf };

/// A node of the data model with all below it. The root is a container without a name. A leaf-list
/// and anydata are leaves of type C_BUF: no rule reads them, and a leaf-list's values are one text.
struct SchemaNode {
    std::string name;
    NodeKind kind = NodeKind::container;
    confd_vtype type = C_NOEXISTS;                       ///< a leaf's; C_XMLTAG for type empty
    std::vector<std::pair<int32_t, std::string>> enums;  ///< an enumeration's values and labels
    bool is_encrypted = false;                           ///< a leaf's: its text is for no reader
    std::vector<std::string> keys;    ///< a list's, names of leaves among children
    bool is_ordered_by_user = false;  ///< a list's: the order of its entries means something
    std::vector<SchemaNode> children;
    bool is_anydata = false;  ///< a leaf whose text is what a file has there, as it has it

    /// The child's position in `children`, or -1.
    int child_index(std::string_view child_name) const;
};

}  // namespace local_platform
