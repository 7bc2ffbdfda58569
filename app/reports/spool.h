/// Text that waits for what goes before it.
#pragma once

#include <optional>
#include <string>

#include "files/file_descriptor.h"
#include "reports/report_writer.h"

/// Keeps text of any length: little of it in memory, much of it in a temporary file that nobody
/// else can open and that is gone with the process. Where no such file can be made, in memory.
class Spool {
  public:
    /// Throws InputError when the file cannot be written.
    void write(const std::string& text);

    /// Hands on all of it, in parts. Throws InputError when the file cannot be read.
    void copy_to(const Write& write) const;

  private:
    std::string text_;  ///< that the file does not hold
    std::optional<FileDescriptor> file_;
};
