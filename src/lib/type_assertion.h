/// `assert` that no build type removes. Include it last.
///
/// A key of an unexpected type means that the data model binds a rule to a node that it was not
/// written for. The rules assert each type themselves, in the handler's body, so that the report
/// shows the rule's file and its full prototype.
#pragma once

#undef NDEBUG
#include <cassert>
