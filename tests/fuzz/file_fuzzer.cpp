/// Any bytes as a candidate, against itself and against nothing, and as an edit of itself: checked
/// to the end, or refused. What is written of them reads as the same configuration.
#include <cstdlib>

#include "checking/rule_walk.h"
#include "configuration/document_writer.h"
#include "errors/input_error.h"

namespace {

/// That it cannot be read, or not the same, ends the process.
void write_and_read_again(const YangModel& model, const Document& document) noexcept {
    const std::string once = write_document(document, document);
    const Document again = model.parse(configuration_from_bytes("written", once), {false, true});
    if (write_document(again, again) != once) {
        std::abort();
    }
}

}  // namespace

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
        write_and_read_again(model, document);
        write_and_read_again(model, model.candidate(file, {true, true}, &document).document);
    } catch (const InputError&) {
        // Refused.
    }
    return 0;
}
