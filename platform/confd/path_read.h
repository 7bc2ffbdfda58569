/// The one shape of MAAPI's and CDB's reads: ask the hook, find what the path names, read it.
#pragma once

#include "endpoint.h"
#include "hook.h"
#include "path_argument.h"
#include "path_lookup.h"

namespace local_platform {

constexpr const char* kAbsentLeaf = "the leaf does not exist";

/// What a read makes of the node it is given: the operation's answer, or why there is none.
struct ReadResult {
    int answer = CONFD_OK;
    const char* error = nullptr;  ///< static text
};

/// Serves `operation` on what `path` names in the tree of `endpoint`, which is null for a socket or
/// transaction that is not there. `read` takes the Lookup, which is no error.
template <typename Read>
int serve_read(const char* operation, int sock, const Endpoint* endpoint, const PathArgument& path,
               Read read) {
    return serve(operation, sock, path, [&] {
        if (endpoint == nullptr) {
            return fail("no such socket or transaction", path);
        }
        const Lookup& found = endpoint->paths.find(path.c_str());
        const ReadResult result = found.error == nullptr ? read(found) : ReadResult{0, found.error};
        const bool of_model = result.error != kMalformedPath && result.error != kAbsentLeaf;
        return result.error == nullptr ? result.answer : fail(result.error, path, of_model);
    });
}

/// Answers 1 when the node exists (a list: when it holds entries), 0 when it does not.
constexpr auto read_existence = [](const Lookup& found) -> ReadResult {
    const bool is_there =
        found.node != nullptr && (!found.names_list || !found.node->children.empty());
    return {is_there ? 1 : 0};
};

/// Reads the leaf's value, `member` of a value of type `type`, into `rval`.
template <typename Value>
auto read_value(confd_vtype type, Value decltype(confd_value_t::val)::*member, Value* rval) {
    return [=](const Lookup& found) -> ReadResult {
        if (found.schema->type != type) {
            return {CONFD_ERR, "no leaf of that type"};
        }
        if (found.node == nullptr) {
            return {CONFD_ERR, kAbsentLeaf};
        }
        *rval = found.node->value().val.*member;
        return {};
    };
}

}  // namespace local_platform
