/// A file that is read, thought about, and replaced by a new one that is whole on disk first.
#pragma once

#include <sys/stat.h>

#include <filesystem>
#include <optional>
#include <string>

#include "files/file_descriptor.h"
#include "files/file_lock.h"

/// A regular file, or the name of one that is still to come. Who replaces a file through this class
/// waits for the others who do; that it was changed in another way is found out before it is
/// replaced. Every function throws InputError, which says what is in the file's place.
class LockedFile {
  public:
    /// Waits for the lock, and reads the file behind all symbolic links, when it has no more than
    /// `max_size` bytes. What is no regular file is refused first.
    LockedFile(const std::string& file, std::size_t max_size, Patience patience);

    /// What the file held when it was opened; nothing when there was none.
    const std::optional<std::string>& bytes() const { return bytes_; }

    /// Lets others replace the file until lock() is called.
    void unlock() { place_.reset(); }
    void lock();

    /// Puts `bytes` in the file's place, atomically and durably, with the access that the file had.
    /// It must be the one that was read, with the same bytes, and the lock must be held. The new
    /// file is there when this returns; the text says why a power failure may still undo that, and
    /// is empty when none can.
    [[nodiscard]] std::string replace(const std::string& bytes) const;

  private:
    /// Where the file really lies, locked.
    struct Place {
        Place(const std::string& shown_name, const std::filesystem::path& target,
              const Patience& patience);
        /// Whether `shown_name` still leads here.
        bool is_place_of(const std::string& shown_name) const;

        std::string name;  ///< in the folder
        FileDescriptor folder;
        FileLock lock;
    };

    void read();
    bool is_as_it_was_read() const;

    std::string shown_name_;
    std::size_t max_size_;
    Patience patience_;
    std::optional<Place> place_;
    FileDescriptor file_{-1};
    struct stat seen_ {};  ///< of the file as it was opened, before it was read
    std::optional<std::string> bytes_;
};
