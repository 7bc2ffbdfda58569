/// Text that waits for what goes before it.
#pragma once

#include <cstdio>
#include <memory>
#include <string>

#include "reports/report_writer.h"

/// Keeps text of any length: the first of it in memory, more in a temporary file that nobody else
/// can open and that is gone with the process.
class Spool {
  public:
    /// Throws CannotCheck when the file cannot be made or written.
    void write(const std::string& text);

    /// Hands on all of it, in parts. Throws CannotCheck when the file cannot be read.
    void copy_to(const Write& write) const;

  private:
    struct FileCloser {
        void operator()(std::FILE* file) const { std::fclose(file); }
    };

    std::unique_ptr<std::FILE, FileCloser> file_;
    std::string text_;  ///< what the file does not hold yet
};
