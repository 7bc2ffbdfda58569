#include "checking/locations.h"

#include <string_view>

void locate(Report& report, const Document& candidate, const Document* running) {
    for (Finding& finding : report.findings) {
        finding.location = candidate.locate(finding.path);
        for (ReadValue& value : finding.values) {
            const bool is_running = std::string_view(value.datastore) == "running";
            const Document* const document = is_running ? running : &candidate;
            value.location = document == nullptr ? Location() : document->locate(value.path);
        }
    }
}
