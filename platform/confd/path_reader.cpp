#include "path_reader.h"

#include "keypath.h"

namespace local_platform {
namespace {

/// A set of characters that answers with one load.
class CharacterSet {
  public:
    constexpr explicit CharacterSet(std::string_view members) {
        for (const char c : members) {
            holds_[static_cast<unsigned char>(c)] = true;
        }
    }

    constexpr bool holds(char c) const { return holds_[static_cast<unsigned char>(c)]; }

  private:
    bool holds_[256] = {};
};

constexpr CharacterSet kNameEnds("/{[");
constexpr CharacterSet kBareKeyEnds({" \t\n\r{}\"", sizeof " \t\n\r{}\""});  // and NUL

/// How much of `text` is before the first of `ends`. find_first_of() would search its set anew,
/// with a call, for each character.
std::size_t length_before(std::string_view text, const CharacterSet& ends) {
    std::size_t length = 0;
    while (length < text.size() && !ends.holds(text[length])) {
        ++length;
    }
    return length;
}

}  // namespace

bool is_addressable(std::string_view key) {
    return !key.empty() && length_before(key, kBareKeyEnds) == key.size();
}

PathReader::PathReader(std::string_view path) : rest_(path) {
    if (!rest_.empty() && rest_.front() == '/') {
        rest_.remove_prefix(1);
    }
}

PathReader::Result PathReader::next(PathStep& step) {
    if (rest_.empty()) {
        return Result::end;
    }
    if (!at_start_) {
        if (rest_.front() != '/') {
            return Result::malformed;
        }
        rest_.remove_prefix(1);
    }
    at_start_ = false;
    step.name = rest_.substr(0, length_before(rest_, kNameEnds));
    if (step.name.empty()) {
        return Result::malformed;
    }
    rest_.remove_prefix(step.name.size());
    step.key_count = 0;
    step.has_keys = !rest_.empty() && (rest_.front() == '{' || rest_.front() == '[');
    return !step.has_keys || read_keys(step) ? Result::step : Result::malformed;
}

/// `{key1 key2}` or `["key1" "key2"]`: the opening mark is there, the closing one must follow.
bool PathReader::read_keys(PathStep& step) {
    const bool quoted = rest_.front() == '[';
    const char close = quoted ? ']' : '}';
    for (char before = ' '; before == ' ';) {
        rest_.remove_prefix(1);
        if (step.key_count == step.keys.size()) {
            return false;
        }
        std::string_view& key = step.keys[step.key_count++];
        if (!(quoted ? read_quoted_key(key) : read_bare_key(key)) || rest_.empty()) {
            return false;
        }
        before = rest_.front();
        if (before != ' ' && before != close) {
            return false;
        }
    }
    rest_.remove_prefix(1);
    return true;
}

bool PathReader::read_bare_key(std::string_view& key) {
    key = rest_.substr(0, length_before(rest_, kBareKeyEnds));
    rest_.remove_prefix(key.size());
    return !key.empty();
}

bool PathReader::read_quoted_key(std::string_view& key) {
    if (rest_.empty() || rest_.front() != '"') {
        return false;
    }
    rest_.remove_prefix(1);
    const std::size_t plain_end = rest_.find_first_of("\"\\");
    if (plain_end == std::string_view::npos) {
        return false;
    }
    if (rest_[plain_end] == '"') {
        key = rest_.substr(0, plain_end);
        rest_.remove_prefix(plain_end + 1);
        return true;
    }
    // Room for all that can follow, so that earlier keys' views stay where they are.
    unescaped_.reserve(unescaped_.size() + rest_.size());
    const std::size_t start = unescaped_.size();
    while (!rest_.empty() && rest_.front() != '"') {
        const bool escape = rest_.front() == '\\';
        if (escape && rest_.size() == 1) {
            return false;
        }
        unescaped_ += rest_[escape ? 1 : 0];
        rest_.remove_prefix(escape ? 2 : 1);
    }
    if (rest_.empty()) {
        return false;
    }
    rest_.remove_prefix(1);
    key = std::string_view(unescaped_).substr(start);
    return true;
}

}  // namespace local_platform
