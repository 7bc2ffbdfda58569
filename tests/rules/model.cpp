#include "model.h"

using local_platform::SchemaNode;

namespace {

/// A list of addresses.
SchemaNode list_of(const char* name, confd_vtype type) {
    return list(name, {"ip"}, {leaf("ip", type)});
}

}  // namespace

SchemaNode vrrp_model() {
    const SchemaNode ipv4 =
        container("address", {leaf("ip", C_IPV4_AND_PLEN), list_of("secondary", C_IPV4_AND_PLEN)});
    const SchemaNode l3 =
        list("l3", {"name"},
             {leaf("name", C_BUF), container("lower-layer-if", {leaf("vlan", C_INT32)}),
              leaf("vrf", C_BUF), container("ipv4", {ipv4}),
              container("ipv6", {leaf("enable", C_BOOL), list_of("address", C_IPV6_AND_PLEN)})});
    const SchemaNode link_local =
        container("link-local", {leaf("auto-configuration", C_XMLTAG), leaf("ip", C_IPV6)});
    SchemaNode password = leaf("simple-text-password", C_BUF);
    password.is_encrypted = true;
    const SchemaNode instance = list(
        "vr-id", {"id"},
        {leaf("id", C_UINT8), leaf("version", C_UINT8), leaf("priority", C_UINT8),
         container("address", {list_of("ipv4", C_IPV4), list_of("ipv6", C_IPV6)}),
         container("address-link-local", {link_local}), container("authentication", {password})});
    SchemaNode family = leaf("family", C_ENUM_VALUE);
    family.enums = {{0, "ipv4"}, {1, "ipv6"}};
    const SchemaNode interfaces =
        list("interface", {"name"},
             {leaf("name", C_BUF), list("address-family", {"family"}, {family, instance})});
    return container("", {container("config", {container("interface", {l3})}),
                          container("router", {container("vrrp", {interfaces})})});
}
