#include "reports/json_elements.h"

namespace {

class JsonWriter final : public ReportWriter {
  public:
    using ReportWriter::ReportWriter;

    void add(const Report& report, const std::vector<Finding>& /*findings*/) override {
        reports_.add(report_to_json(report));
    }

    void finish(const Summary& summary, std::size_t /*not_reached*/) override {
        reports_.finish(",\n  \"summary\": " + indented(summary_to_json(summary), "  ") + "\n}\n");
    }

  private:
    JsonElements reports_{write_,
                          std::string("{\n  \"format_version\": \"") + kFormatVersion +
                              "\",\n  \"command_version\": \"" VRRP_VALID_VERSION
                              "\",\n  \"reports\": ",
                          1};
};

}  // namespace

std::unique_ptr<ReportWriter> json_writer(const ReportOptions& options, const Write& write) {
    return std::make_unique<JsonWriter>(options, write);
}
