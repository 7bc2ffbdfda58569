/// The text of a file: its lines, and what of it may be shown.
#pragma once

#include <cstdint>
#include <mutex>
#include <string>
#include <string_view>
#include <vector>

#include "errors/location.h"

/// What every character of a secret is replaced by; it is allowed in neither JSON nor XML.
constexpr char kMask = '\x01';

/// How many bytes the byte order mark at the beginning of `text` takes.
std::size_t byte_order_mark_size(std::string_view text);

/// A file's text as it was read. A line ends with LF or CRLF; a column is one UTF-8 character, a
/// tab too; a byte order mark is none. Once it is complete, any thread may ask.
class SourceText {
  public:
    SourceText(std::string name, std::string bytes)
        : name_(std::move(name)), bytes_(std::move(bytes)) {}

    const std::string& name() const { return name_; }  ///< as the operator gave it
    std::string_view bytes() const { return bytes_; }

    /// Hides the bytes from `begin` up to `end`, a secret. The text is read from its beginning to
    /// its end: no later call may hide what is before.
    void hide(std::size_t begin, std::size_t end);

    Location location(std::size_t offset) const;
    std::size_t line_count() const;

    /// The number of the line that the byte `offset` is in, from 1.
    std::size_t line_of(std::size_t offset) const;

    /// What the line `number`, from 1 to line_count(), has before `column` and from there on, at
    /// most `around` bytes each; kMask for each character of a secret.
    struct LinePart {
        std::string before;
        std::string after;
    };
    LinePart part_of_line(std::size_t number, std::size_t column, std::size_t around) const;

  private:
    struct Range {
        std::size_t begin;
        std::size_t end;
    };

    /// Where things are; found when a place is asked for, so that a file on one line takes no
    /// longer than any other.
    struct Index {
        std::vector<std::uint32_t> line_begins;
        std::vector<std::uint32_t> characters;  ///< before each block of bytes
    };

    const Index& index() const;
    std::size_t characters_before(std::size_t offset) const;
    std::string shown(std::size_t begin, std::size_t end) const;

    std::string name_;
    std::string bytes_;
    std::vector<Range> secrets_;
    mutable std::once_flag once_;
    mutable Index index_;
};
