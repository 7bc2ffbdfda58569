#include "reports/report_stream.h"

#include <algorithm>
#include <iterator>

#include "reports/spool.h"

namespace {

struct Format {
    const char* name;
    MakeWriter* make;
    bool tells_accepted;  ///< whether it shows accepted warnings in another way
};

constexpr Format kFormats[] = {
    {"text", text_writer, false},    {"json", json_writer, false},    {"junit", junit_writer, true},
    {"github", github_writer, true}, {"gitlab", gitlab_writer, true}, {"sarif", sarif_writer, true},
    {"html", html_writer, true},
};

/// Whether the warnings are accepted shows when all of them are counted: until then the document
/// is kept both ways.
class EitherWriter final : public ReportWriter {
  public:
    EitherWriter(MakeWriter* make, const ReportOptions& options, Write write)
        : options_(options), write_(std::move(write)) {
        ReportOptions settled = options;
        settled.max_warnings = 0;
        refused_ = make(settled, [this](const std::string& text) { refused_text_.write(text); });
        settled.accept_warnings = true;
        accepted_ = make(settled, [this](const std::string& text) { accepted_text_.write(text); });
    }

    void add(const Report& report) override {
        refused_->add(report);
        accepted_->add(report);
    }

    void finish(const Summary& summary, std::size_t not_reached) override {
        refused_->finish(summary, not_reached);
        accepted_->finish(summary, not_reached);
        (options_.accepts(summary.warnings) ? accepted_text_ : refused_text_).copy_to(write_);
    }

  private:
    ReportOptions options_;
    Write write_;
    Spool refused_text_;
    Spool accepted_text_;
    std::unique_ptr<ReportWriter> refused_;
    std::unique_ptr<ReportWriter> accepted_;
};

std::unique_ptr<ReportWriter> make_writer(const ReportOptions& options, const Write& write) {
    const Format& format =
        *std::find_if(std::begin(kFormats), std::end(kFormats),
                      [&](const Format& one) { return options.format == one.name; });
    const bool is_open = options.max_warnings > 0 && !options.accept_warnings;
    return is_open && format.tells_accepted
               ? std::make_unique<EitherWriter>(format.make, options, write)
               : format.make(options, write);
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
        writer_->add(report);
    }
}

void ReportStream::finish(std::size_t not_reached) {
    summary_.add_unreached(not_reached);
    if (writer_ != nullptr) {
        writer_->finish(summary_, not_reached);
    }
}
