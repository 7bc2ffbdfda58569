#include "reports/report_stream.h"

#include "reports/report_text.h"

namespace {

struct Format {
    const char* name;
    MakeWriter* make;
};

constexpr Format kFormats[] = {
    {"text", text_writer},   {"concise", concise_writer}, {"json", json_writer},
    {"junit", junit_writer}, {"github", github_writer},   {"gitlab", gitlab_writer},
    {"sarif", sarif_writer}, {"html", html_writer},
};

std::unique_ptr<ReportWriter> make_writer(const ReportOptions& options, const Write& write) {
    const Format* format = kFormats;
    while (options.format != format->name) {
        ++format;
    }
    return format->make(options, write);
}

}  // namespace

std::vector<std::string> report_formats() {
    std::vector<std::string> names;
    for (const Format& format : kFormats) {
        names.emplace_back(format.name);
    }
    return names;
}

ReportStream::ReportStream(const ReportOptions& options, const Write& write)
    : writer_(options.silent ? nullptr : make_writer(options, write)) {}

void ReportStream::add(const Report& report) {
    summary_.add(report);
    if (writer_ != nullptr) {
        writer_->add(report, told_findings(report));
    }
}

void ReportStream::finish(std::size_t not_reached, std::vector<std::string> notes) {
    summary_.add_unreached(not_reached);
    summary_.notes = std::move(notes);
    if (writer_ != nullptr) {
        writer_->finish(summary_, not_reached);
    }
}
