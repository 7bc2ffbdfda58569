/// Lines of a configuration, as they are shown beside a finding.
#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "checking/report.h"

/// A source line around a place. All parts are printable; what is secret is told as such.
struct Excerpt {
    std::string before;
    std::string marked;  ///< the name at the place; empty when there is none
    std::string after;
};

/// The lines of a report's sources. The sources must live as long.
class SourceLines {
  public:
    explicit SourceLines(const std::vector<std::shared_ptr<const SourceText>>& sources);

    /// The line of `location`, of a long one what is near; nothing when it is not known.
    std::optional<Excerpt> excerpt(const Location& location) const;

    /// How many lines the file of `location` has; 0 when it is not known.
    std::size_t count(const Location& location) const;

  private:
    const SourceText* find(const Location& location) const;

    const std::vector<std::shared_ptr<const SourceText>>& sources_;
};
