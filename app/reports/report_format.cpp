#include "reports/report_format.h"

#include <unistd.h>

#include <utility>

#include "reports/totals.h"
#include "terminal/output.h"

namespace {

std::string format_for_reader(const std::vector<Report>& reports, const ReportOptions& options) {
    return format_text(reports, {options.quiet, wants_colour(), is_terminal(STDOUT_FILENO)});
}

using Format = std::string (*)(const std::vector<Report>&, const ReportOptions&);

constexpr std::pair<const char*, Format> kFormats[] = {
    {"text", format_for_reader}, {"json", format_json},     {"junit", format_junit},
    {"github", format_github},   {"gitlab", format_gitlab}, {"sarif", format_sarif},
    {"html", format_html},
};

}  // namespace

std::vector<std::string> report_formats() {
    std::vector<std::string> names;
    for (const auto& [name, format] : kFormats) {
        names.emplace_back(name);
    }
    return names;
}

std::string format_reports(const std::vector<Report>& reports, const ReportOptions& options) {
    if (options.silent) {
        return {};
    }
    for (const auto& [name, format] : kFormats) {
        if (options.format == name) {
            ReportOptions settled = options;
            settled.accept_warnings = options.accepts(total_of(reports).warnings);
            return format(reports, settled);
        }
    }
    return {};
}
