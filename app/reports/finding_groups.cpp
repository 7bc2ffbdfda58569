#include "reports/finding_groups.h"

#include <unordered_map>

std::vector<FindingGroup> finding_groups(const Report& report) {
    std::vector<FindingGroup> blocks;
    std::unordered_map<std::string, std::size_t> by_cause;
    for (const Finding& finding : report.findings) {
        const bool is_alone = finding.cause.empty();
        const auto place =
            is_alone ? blocks.size() : by_cause.emplace(finding.cause, blocks.size()).first->second;
        if (place == blocks.size()) {
            blocks.push_back({finding.cause, {}});
        }
        blocks[place].findings.push_back(&finding);
    }
    return blocks;
}
