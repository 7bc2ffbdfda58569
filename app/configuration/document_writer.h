/// Documents as text.
#pragma once

#include <functional>
#include <string>

#include "configuration/document.h"

/// `document` in the format and the envelope of `like`: two blanks to a level, canonical values, an
/// entry's keys first, the entries of a list behind its first one, and otherwise the document's
/// order. What the model does not describe keeps its meaning. Writing what was read again gives the
/// same bytes. Throws InputError for such data, or metadata, in the other format, which nobody can
/// translate without its module.
std::string write_document(const Document& document, const Document& like);

/// What a file holds once `candidate` is the running configuration: written like `running`, or like
/// itself when that is null. Throws InputError when the candidate is an edit with data that
/// only its module could merge.
std::string write_as_running(const Document& candidate, const Document* running);

/// write_document() for each format.
std::string write_json(const Document& document, const Envelope& envelope);
std::string write_xml(const Document& document, const Envelope& envelope);

/// The children of `node` in the order in which they are written. Containers that hold nothing are
/// left out, where they are there only to hold something.
std::vector<const DocumentNode*> children_to_write(const DocumentNode& node);
