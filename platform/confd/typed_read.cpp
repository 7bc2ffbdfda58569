#include "typed_read.h"

namespace local_platform {
namespace {

/// The value of the leaf at `path`, of type `type`; null, with the reason noted, when it cannot be
/// had.
const confd_value_t* find_value(const Endpoint* endpoint, std::string_view path, confd_vtype type) {
    const Lookup found = look_up_in(endpoint, path);
    const char* error = found.error;
    if (error == nullptr && found.schema->type != type) {
        error = "no leaf of that type";
    }
    if (error == nullptr && found.node == nullptr) {
        error = "the leaf does not exist";
    }
    if (error != nullptr) {
        fail(error, path);
        return nullptr;
    }
    return &found.node->value;
}

template <typename Value, typename Member>
int read_into(const confd_value_t* value, Value* rval, Member member) {
    if (value == nullptr) {
        return CONFD_ERR;
    }
    *rval = member(*value);
    return CONFD_OK;
}

}  // namespace

Lookup look_up_in(const Endpoint* endpoint, std::string_view path) {
    if (endpoint != nullptr) {
        return look_up(endpoint->tree.root(), path);
    }
    Lookup nothing;
    nothing.error = "no such socket or transaction";
    return nothing;
}

int exists(const Endpoint* endpoint, std::string_view path) {
    const Lookup found = look_up_in(endpoint, path);
    if (found.error != nullptr) {
        return fail(found.error, path);
    }
    const bool is_there =
        found.node != nullptr && (!found.names_list || !found.node->children.empty());
    return is_there ? 1 : 0;
}

int read_int32(const Endpoint* endpoint, std::string_view path, int32_t* rval) {
    return read_into(find_value(endpoint, path, C_INT32), rval,
                     [](const confd_value_t& value) { return value.val.i32; });
}

int read_bool(const Endpoint* endpoint, std::string_view path, int* rval) {
    return read_into(find_value(endpoint, path, C_BOOL), rval,
                     [](const confd_value_t& value) { return value.val.boolean; });
}

int read_ipv4_prefix(const Endpoint* endpoint, std::string_view path, confd_ipv4_prefix* rval) {
    return read_into(find_value(endpoint, path, C_IPV4_AND_PLEN), rval,
                     [](const confd_value_t& value) { return value.val.ipv4prefix; });
}

int read_ipv6_prefix(const Endpoint* endpoint, std::string_view path, confd_ipv6_prefix* rval) {
    return read_into(find_value(endpoint, path, C_IPV6_AND_PLEN), rval,
                     [](const confd_value_t& value) { return value.val.ipv6prefix; });
}

}  // namespace local_platform
