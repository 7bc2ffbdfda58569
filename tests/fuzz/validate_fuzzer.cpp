/// Requests whose keys have the types that the model gives them, about any text: a response and at
/// most one message for each.
#include <fuzzer/FuzzedDataProvider.h>

#include "configuration/yang_model.h"
#include "instance.h"
#include "keypath.h"
#include "vrrp_valid.h"

using namespace local_platform;

namespace {

constexpr std::size_t kLengths[] = {0, 64, 255, 256, 300};
constexpr const char* kLeafs[] = {"vrf",
                                  "lower-layer-if/vlan",
                                  "ipv4/address/ip",
                                  "ipv6/enable",
                                  "ipv4/address/secondary{0.0.0.0/0}/ip",
                                  "ipv6/address{::1/9}/ip"};
constexpr const char* kValues[] = {"1", "2", "192.0.2.1/24", "true", "0.0.0.0/0", "::1/9"};

/// Virtual routers and layer-3 interfaces. Throws PlatformError for a leaf of another type.
DataTree any_tree(const YangModel& model, const CryptoKey& key, FuzzedDataProvider& data) {
    TreeBuilder builder(model.schema());
    while (data.ConsumeBool()) {
        std::string name = data.ConsumeRandomLengthString(40);
        name.resize(std::max(name.size(), data.PickValueInArray(kLengths)), 'k');
        builder.set("config/interface/l3" + keys_text({name}) + "/" + data.PickValueInArray(kLeafs),
                    data.PickValueInArray(kValues));
        const std::string id = "router/vrrp/interface" + keys_text({"l3-" + name}) +
                               "/address-family{" + (data.ConsumeBool() ? "ipv4" : "ipv6") +
                               "}/vr-id{5}";
        builder.set(id + "/version", "3").set(id + "/address-link-local/link-local/ip", "fe80::1");
        builder.set(id + "/address/ipv4{192.0.2.255}").set(id + "/address/ipv6{::}");
        const std::string text = data.ConsumeRandomLengthString(99);
        builder.set(id + "/authentication/simple-text-password",
                    data.ConsumeBool() ? encrypt(key, text) : text);
    }
    return std::move(builder).build();
}

/// Asks about `node` and all below it, with `tail` behind a rule's name and as a selector.
void ask(const YangModel& model, const Instance& instance, const Node& node, std::string& tail) {
    const bool is_list = node.schema->kind == NodeKind::list && !node.is_entry();
    for (std::size_t i = 0; !is_list && i < model.rules(*node.schema).size(); ++i) {
        std::string selector = model.rules(*node.schema)[i].name + tail;
        std::vector<std::string> messages;
        confd_trans_ctx tctx{instance.thandle(), instance.handle(), selector.data(), &messages};
        confd_hkeypath_t kp;
        fill_keypath(node, kp);
        confd_value_t value = node.value();
        const bool is_refused = validate(&tctx, &kp, &value) != CONFD_OK;
        tctx.validate_opaque = tail.data();
        if (validate(&tctx, &kp, &value) != CONFD_ERR || messages.size() > (is_refused ? 1 : 0)) {
            __builtin_trap();
        }
    }
    for (const auto& child : node.children) {
        if (child != nullptr) {
            ask(model, instance, *child, tail);
        }
    }
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const unsigned char* bytes, std::size_t size) try {
    static const YangModel model(VRRP_VALID_YANG_DIR);
    static const CryptoKey key;
    FuzzedDataProvider data(bytes, size);
    std::string tail = "_" + data.ConsumeRandomLengthString(8);
    const DataTree asked = any_tree(model, key, data);
    const DataTree candidate = data.ConsumeBool() ? asked : any_tree(model, key, data);
    ask(model, Instance(candidate, any_tree(model, key, data), key), asked.root(), tail);
    return 0;
} catch (const PlatformError&) {
    return 0;
}
