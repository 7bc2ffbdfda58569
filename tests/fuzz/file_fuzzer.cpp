/// Any bytes as a candidate, against itself and against nothing: checked to the end, or refused.
#include "checking/rule_walk.h"
#include "errors/cannot_check.h"

extern "C" int LLVMFuzzerTestOneInput(const char* bytes, std::size_t size) {
    static const YangModel model(VRRP_VALID_YANG_DIR);
    static const local_platform::Host host(VRRP_VALID_PLUGIN);
    try {
        const auto tree =
            model.tree(model.parse(configuration_from_bytes("file", std::string(bytes, size))));
        for (const auto& running : {tree, local_platform::DataTree(model.schema())}) {
            Report report;
            walk_candidate({model, host, {}, {}}, {tree, running, local_platform::CryptoKey()},
                           report);
        }
    } catch (const CannotCheck&) {
        // Refused.
    }
    return 0;
}
