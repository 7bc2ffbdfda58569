/// Any bytes as a stored report, as a candidate, against itself and against nothing, and as an edit
/// of itself: checked to the end, or refused.
#include "checking/rule_walk.h"
#include "errors/input_error.h"
#include "reports/report_reader.h"
#include "trees/difference.h"

extern "C" int LLVMFuzzerTestOneInput(const char* bytes, std::size_t size) {
    static const YangModel model(VRRP_VALID_YANG_DIR);
    static const local_platform::Host host(VRRP_VALID_PLUGIN);
    try {
        read_reports("file", {bytes, size});
    } catch (const InputError&) {
        // No report.
    }
    try {
        const auto file = std::make_shared<SourceText>("file", std::string(bytes, size));
        const Configuration candidate = model.read(file, {false, true});
        const Configuration empty{{}, {}, local_platform::DataTree(model.schema())};
        for (const Configuration* const running : {&candidate, &empty}) {
            Report report;
            walk_candidate({model, host}, {candidate, *running, local_platform::CryptoKey()},
                           report);
        }
        difference(empty.tree, candidate.tree);
        model.read(file, {true, true}, &candidate);
    } catch (const InputError&) {
        // Refused.
    }
    return 0;
}
