/// Any bytes as a candidate, against itself and against nothing: judged to the end, or refused.
#include "cannot_judge.h"
#include "judge.h"

extern "C" int LLVMFuzzerTestOneInput(const char* bytes, std::size_t size) {
    static const YangModel model(VRRP_VALID_YANG_DIR);
    static const local_platform::Host host(VRRP_VALID_PLUGIN);
    try {
        const auto tree = model.read(configuration_from_bytes("file", std::string(bytes, size)));
        for (const auto& running : {tree, local_platform::DataTree(model.schema())}) {
            Report report;
            run_judge({model, host, {}, {}}, {tree, running, local_platform::CryptoKey()}, report);
        }
    } catch (const CannotJudge&) {
        // Refused.
    }
    return 0;
}
