/// `--output`: standard output goes into a file.
#pragma once

#include <string>

/// While it lives, what is written to standard output goes into a new file beside the named one,
/// which is replaced when all is written, and never half. A file that is no regular one, such as a
/// pipe, is written to as it is.
class OutputFile {
  public:
    /// Throws InputError when the file cannot be made.
    explicit OutputFile(const std::string& name);
    OutputFile(const OutputFile&) = delete;
    OutputFile& operator=(const OutputFile&) = delete;
    /// Without put_in_place() the named file stays as it was.
    ~OutputFile();

    /// Throws InputError when it cannot be; the named file is as it was then.
    void put_in_place();

  private:
    std::string name_;            ///< links followed
    std::string temporary_name_;  ///< empty when there is none
};
