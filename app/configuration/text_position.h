/// From a byte in a file to what an editor shows.
#pragma once

#include <cstdint>
#include <mutex>
#include <string>
#include <string_view>
#include <vector>

#include "errors/location.h"

/// The line and column of the byte `offset` of `text`, the content of `file`. A line ends with LF
/// or CRLF; a column is one UTF-8 character, a tab too; a byte order mark is none.
Location position_in(const std::string& file, std::string_view text, std::size_t offset);

/// The same for many places of one text: finds the lines when the first place is asked for.
class LineIndex {
  public:
    Location position_in(const std::string& file, std::string_view text, std::size_t offset) const;

  private:
    mutable std::once_flag once_;
    mutable std::vector<std::uint32_t> begins_;
};

/// How many bytes the byte order mark at the beginning of `text` takes.
std::size_t byte_order_mark_size(std::string_view text);
