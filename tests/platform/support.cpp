#include "support.h"

#include <algorithm>

using namespace local_platform;

SchemaNode leaf(const char* name, confd_vtype type) {
    SchemaNode node;
    node.name = name;
    node.kind = NodeKind::leaf;
    node.type = type;
    return node;
}

SchemaNode container(const char* name, std::vector<SchemaNode> children) {
    SchemaNode node;
    node.name = name;
    node.children = std::move(children);
    return node;
}

SchemaNode list(const char* name, Strings keys, std::vector<SchemaNode> children) {
    SchemaNode node = container(name, std::move(children));
    node.kind = NodeKind::list;
    for (const std::string& key : keys) {
        if (node.child_index(key) < 0) {
            node.children.push_back(leaf(key.c_str(), C_BUF));
        }
    }
    node.keys = std::move(keys);
    return node;
}

Model router_model() {
    SchemaNode family = leaf("family", C_ENUM_VALUE);
    family.enums = {{0, "ipv4"}, {1, "ipv6"}, {2, "both of \"them\""}};
    const SchemaNode l3 =
        list("l3", {"name"},
             {leaf("vrf", C_BUF), leaf("vlan", C_INT32), leaf("enable", C_BOOL),
              list("address", {"ip"}, {leaf("ip", C_IPV6_AND_PLEN)}),
              list("tunnel", {"from", "to"}, {leaf("to", C_UINT8), leaf("cost", C_INT32)})});
    const SchemaNode instance =
        list("vr-id", {"id"}, {leaf("id", C_UINT8), leaf("version", C_UINT8)});
    const SchemaNode interface =
        list("interface", {"name"}, {list("address-family", {"family"}, {family, instance})});
    return std::make_shared<const SchemaNode>(
        container("", {container("config", {container("interface", {l3})}),
                       container("router", {container("vrrp", {interface})})}));
}

DataTree tree_of(const Model& model, const std::vector<Setting>& settings) {
    TreeBuilder builder(model);
    for (const auto& [path, value] : settings) {
        builder.set(path, value);
    }
    return std::move(builder).build();
}
