#include "configuration/nearest_name.h"

#include <algorithm>
#include <numeric>
#include <utility>

namespace {

/// How many letters have to be put in, left out or replaced.
std::size_t edits_between(std::string_view one, std::string_view other) {
    std::vector<std::size_t> row(other.size() + 1);
    std::iota(row.begin(), row.end(), 0);
    for (std::size_t i = 0; i < one.size(); ++i) {
        std::size_t diagonal = std::exchange(row[0], i + 1);
        for (std::size_t j = 0; j < other.size(); ++j) {
            const std::size_t replaced = diagonal + (one[i] == other[j] ? 0 : 1);
            diagonal = row[j + 1];
            row[j + 1] = std::min({replaced, row[j] + 1, diagonal + 1});
        }
    }
    return row.back();
}

}  // namespace

std::string nearest_name(std::string_view mistyped, const std::vector<std::string>& known) {
    std::string nearest;
    std::size_t fewest = std::max<std::size_t>(mistyped.size() / 3, 1) + 1;
    for (const std::string& name : known) {
        const std::size_t edits = edits_between(mistyped, name);
        if (edits < fewest) {
            fewest = edits;
            nearest = name;
        }
    }
    return nearest;
}
