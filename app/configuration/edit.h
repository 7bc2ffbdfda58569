/// What an edit makes of a running configuration: RFC 6241, section 7.2, and RFC 7950, sections
/// 7.5.8, 7.6.7, 7.7.9, 7.8.6 and 7.9.
#pragma once

#include "configuration/document.h"

/// `running` with `edit` applied. Nodes that the edit holds are located in it, all others in the
/// running file. Throws InputError for an operation that its node does not allow: `data-exists`,
/// `data-missing`, `missing-instance`.
Document apply_edit(const Document& running, const Document& edit);
