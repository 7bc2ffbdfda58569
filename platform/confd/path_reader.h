/// Reads the text form of a path step by step.
#pragma once

#include <array>
#include <cstddef>
#include <string>
#include <string_view>

#include "confd_lib.h"

namespace local_platform {

/// One step: a name, and the key texts that follow it. `has_keys` tells "list{}" from "list".
struct PathStep {
    std::string_view name;
    std::array<std::string_view, MAXKEYLEN - 1> keys;
    std::size_t key_count = 0;
    bool has_keys = false;
};

/// Splits a path. The path must outlive the reader, and the reader the steps it gave.
class PathReader {
  public:
    enum class Result { step, end, malformed };

    explicit PathReader(std::string_view path);

    /// Reads the next step into `step`. After `malformed` the reader is of no further use.
    Result next(PathStep& step);

  private:
    bool read_keys(PathStep& step);
    bool read_bare_key(std::string_view& key);
    bool read_quoted_key(std::string_view& key);

    std::string_view rest_;
    bool at_start_ = true;
    std::string unescaped_;  ///< backs quoted keys that held a backslash
};

}  // namespace local_platform
