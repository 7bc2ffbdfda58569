/// Reads the text form of a path step by step.
#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace local_platform {

/// One step: a name, and the keys that follow it, if any do.
struct PathStep {
    std::string_view name;
    std::vector<std::string> keys;
};

/// Splits a path, which must outlive the reader and its steps.
class PathReader {
  public:
    explicit PathReader(std::string_view path) : rest_(path) { take('/'); }

    /// Reads the next step into `step`. False at the end, and where the path is malformed.
    bool next(PathStep& step);
    bool is_malformed() const { return is_malformed_; }

  private:
    bool take(char c);
    bool read_step(PathStep& step);
    bool read_keys(std::vector<std::string>& keys);
    bool read_bare_key(std::string& key);
    bool read_quoted_key(std::string& key);

    std::string_view rest_;
    bool is_first_ = true;
    bool is_malformed_ = false;
};

}  // namespace local_platform
