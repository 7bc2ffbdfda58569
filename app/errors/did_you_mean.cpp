#include "errors/did_you_mean.h"

#include <algorithm>
#include <numeric>

namespace {

/// How many letters are to be changed, added or left out.
std::size_t distance(std::string_view from, std::string_view to) {
    std::vector<std::size_t> last(to.size() + 1);
    std::vector<std::size_t> row(to.size() + 1);
    std::iota(last.begin(), last.end(), 0U);
    for (std::size_t i = 1; i <= from.size(); ++i) {
        row[0] = i;
        for (std::size_t j = 1; j <= to.size(); ++j) {
            const std::size_t changed = last[j - 1] + (from[i - 1] == to[j - 1] ? 0 : 1);
            row[j] = std::min({changed, last[j] + 1, row[j - 1] + 1});
        }
        last.swap(row);
    }
    return last.back();
}

}  // namespace

std::string nearest_name(std::string_view given, const std::vector<std::string>& names) {
    std::string best;
    std::string whole;  // the shortest that has it as a part
    std::size_t least = given.size() / 3 + 2;
    for (const std::string& name : names) {
        const std::size_t longer = std::max(given.size(), name.size());
        const std::size_t shorter = std::min(given.size(), name.size());
        const std::size_t changes = longer - shorter < least ? distance(given, name) : least;
        if (changes < least) {
            least = changes;
            best = name;
        }
        if (("_" + name + "_").find("_" + std::string(given) + "_") != std::string::npos &&
            (whole.empty() || name.size() < whole.size())) {
            whole = name;
        }
    }
    return best.empty() ? whole : best;
}

std::string did_you_mean(std::string_view given, const std::vector<std::string>& names) {
    const std::string name = nearest_name(given, names);
    return name.empty() ? name : " (did you mean \"" + name + "\"?)";
}
