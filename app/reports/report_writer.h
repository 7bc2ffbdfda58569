/// Reports that are written one after the other as one document.
#pragma once

#include <functional>
#include <memory>
#include <string>
#include <vector>

#include "checking/report.h"
#include "reports/report_format.h"
#include "reports/summary.h"

/// Takes the next part of a document.
using Write = std::function<void(const std::string&)>;

class ReportWriter {
  public:
    ReportWriter(ReportOptions options, Write write)
        : options_(std::move(options)), write_(std::move(write)) {}
    virtual ~ReportWriter() = default;

    /// Writes what `report` adds to the document, or keeps it outside memory for as long as it
    /// cannot be written. `findings` is what told_findings() makes of it.
    virtual void add(const Report& report, const std::vector<Finding>& findings) = 0;

    /// Ends the document. `summary` are those of all candidates, of which `not_reached` have no
    /// report, since the run was ended.
    virtual void finish(const Summary& summary, std::size_t not_reached) = 0;

  protected:
    const ReportOptions options_;
    const Write write_;
};

using MakeWriter = std::unique_ptr<ReportWriter>(const ReportOptions& options, const Write& write);

/// For a reader: each finding as compilers write theirs, those with one cause together; what was
/// checked in a few lines for each candidate; one line for all of several.
MakeWriter text_writer;

/// A line a finding, for editors: "file:line:column: error: message [rule]".
MakeWriter concise_writer;

/// One JSON object, as docs/report.schema.json describes it.
MakeWriter json_writer;

/// JUnit XML: a suite for each candidate, in it a test for each rule, always under the same name.
MakeWriter junit_writer;

/// Workflow commands of GitHub: an annotation for each finding, and one for the result.
MakeWriter github_writer;

/// A code quality report of GitLab: an array of issues.
MakeWriter gitlab_writer;

/// SARIF 2.1.0, with the rules as the model describes them.
MakeWriter sarif_writer;

/// A page for the change ticket: one file that needs neither network nor script.
MakeWriter html_writer;
