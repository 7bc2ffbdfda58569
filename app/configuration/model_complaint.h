/// What the YANG library has to say about data, told of the file that the data comes from.
#pragma once

#include "configuration/document.h"
#include "errors/input_error.h"

struct ly_ctx;

/// The first error that `context` noted since its errors were last cleared: which node of
/// `document` it is about, where that is, and what is wrong. The later ones follow from it. The
/// document's nodes are of `document_context`, which has the same modules.
InputError model_complaint(const ly_ctx& context, const ly_ctx& document_context,
                           const Document& document);
