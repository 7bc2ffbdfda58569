/// From a document to the tree that rules read.
#pragma once

#include "configuration/document.h"
#include "data_tree.h"

struct ly_ctx;

/// The tree of what `document` holds and the platform keeps, its default values included, once the
/// model allows all of it. The work is done in `context`, in which no other thread may make data
/// meanwhile; it has the same modules as `document_context`, of which the document's nodes are.
/// Throws InputError that names the place of what the model refuses.
local_platform::DataTree validated_tree(
    const ly_ctx& context, const ly_ctx& document_context,
    const std::shared_ptr<const local_platform::SchemaNode>& schema, const Document& document);
