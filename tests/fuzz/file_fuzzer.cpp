/// Any bytes as a candidate, against itself and against nothing, and as an edit of itself: checked
/// to the end, or refused.
#include "checking/rule_walk.h"
#include "errors/input_error.h"

extern "C" int LLVMFuzzerTestOneInput(const char* bytes, std::size_t size) {
    static const YangModel model(VRRP_VALID_YANG_DIR);
    static const local_platform::Host host(VRRP_VALID_PLUGIN);
    try {
        const ConfigurationFile file = configuration_from_bytes("file", std::string(bytes, size));
        const Document document = model.parse(file, {false, true});
        const auto tree = model.tree(document);
        for (const auto& running : {tree, local_platform::DataTree(model.schema())}) {
            Report report;
            walk_candidate({model, host, {}, {}}, {tree, running, local_platform::CryptoKey()},
                           report);
            for (const Finding& finding : report.findings) {
                document.locate(finding.path);
            }
        }
        model.candidate(file, {true, true}, &document);
    } catch (const InputError&) {
        // Refused.
    }
    return 0;
}
