/// A JSON array that is written element by element.
#pragma once

#include "reports/report_json.h"
#include "reports/report_writer.h"

/// `json` as text, with `indent` in front of every line but the first.
std::string indented(const Json& json, const std::string& indent);

class JsonElements {
  public:
    /// Writes `head`, what the document has before the array, which is `depth` objects and arrays
    /// deep.
    JsonElements(Write write, const std::string& head, std::size_t depth);

    void add(const Json& element);

    /// Ends the array and the document, which has `tail` behind the array.
    void finish(const std::string& tail);

  private:
    Write write_;
    std::string indent_;  ///< of the array
    bool is_empty_ = true;
};
