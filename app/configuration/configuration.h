/// A configuration that the model allows.
#pragma once

#include "configuration/document.h"
#include "data_tree.h"

struct Configuration {
    Document document;              ///< what its files hold
    local_platform::DataTree tree;  ///< what rules read of it
};
