/// Replaces a file by a new one that is whole on disk first.
#pragma once

#include <filesystem>
#include <optional>
#include <string>

#include "files/file_descriptor.h"

/// The lock of a file's folder: while it lives no other commit into that folder goes on. The lock
/// needs no file of its own, and the system frees it when the process ends in any way.
class FolderLock {
  public:
    /// Waits for the lock of the folder that holds `file`, following symbolic links. Throws
    /// CannotCheck.
    explicit FolderLock(const std::string& file);

    /// The content of the file; nothing when it does not exist. Throws CannotCheck.
    std::optional<std::string> read_file() const;

    /// Puts `bytes` in the file's place, with its permissions and owner, atomically and durably.
    /// Throws CannotCheck; the old file is in its place then, or the new one where the text says
    /// so.
    void replace_file(const std::string& bytes) const;

  private:
    FolderLock(const std::string& file, const std::filesystem::path& target);

    std::string shown_name_;
    std::string name_;            ///< in the folder
    std::string temporary_name_;  ///< the same for every commit, so that the next one clears up
    FileDescriptor folder_;
};
