#include "path_reader.h"

#include <utility>

#include "keypath.h"

namespace local_platform {
namespace {

constexpr std::string_view kNameEnds = "/{[";
constexpr std::string_view kBareKeyEnds(" \t\n\r{}\"", sizeof " \t\n\r{}\"");  // and NUL

}  // namespace

bool is_addressable(std::string_view key) {
    return !key.empty() && key.find_first_of(kBareKeyEnds) == std::string_view::npos;
}

bool PathReader::next(PathStep& step) {
    if (rest_.empty() || is_malformed_) {
        return false;
    }
    is_malformed_ = !read_step(step);
    return !is_malformed_;
}

bool PathReader::take(char c) {
    const bool is_there = !rest_.empty() && rest_.front() == c;
    rest_.remove_prefix(is_there ? 1 : 0);
    return is_there;
}

bool PathReader::read_step(PathStep& step) {
    if (!std::exchange(is_first_, false) && !take('/')) {
        return false;
    }
    step.name = rest_.substr(0, rest_.find_first_of(kNameEnds));
    rest_.remove_prefix(step.name.size());
    step.keys.clear();
    return !step.name.empty() && (rest_.empty() || rest_.front() == '/' || read_keys(step.keys));
}

/// `{key1 key2}` or `["key1" "key2"]`.
bool PathReader::read_keys(std::vector<std::string>& keys) {
    const bool is_quoted = take('[');
    if (!is_quoted) {
        take('{');
    }
    do {
        std::string& key = keys.emplace_back();
        if (!(is_quoted ? read_quoted_key(key) : read_bare_key(key))) {
            return false;
        }
    } while (take(' '));
    return take(is_quoted ? ']' : '}');
}

bool PathReader::read_bare_key(std::string& key) {
    key = rest_.substr(0, rest_.find_first_of(kBareKeyEnds));
    rest_.remove_prefix(key.size());
    return !key.empty();
}

bool PathReader::read_quoted_key(std::string& key) {
    if (!take('"')) {
        return false;
    }
    while (!rest_.empty() && rest_.front() != '"') {
        take('\\');
        key += rest_.substr(0, 1);
        rest_.remove_prefix(std::min<std::size_t>(1, rest_.size()));
    }
    return take('"');
}

}  // namespace local_platform
