#include "configuration/extension_places.h"

#include <vector>

#include "configuration/source_text.h"
#include "errors/input_error.h"
#include "files/named_file.h"

namespace {

bool is_blank(char c) {
    return c == ' ' || c == '\t' || c == '\r' || c == '\n';
}

bool is_mark(char c) {
    return c == '{' || c == '}' || c == ';';
}

/// The words of a module's text: keywords, arguments, "{", "}", ";" and "+"; no comments.
class Words {
  public:
    explicit Words(std::string_view text) : text_(text) {}

    /// The next word, empty at the end.
    std::string_view next() {
        skip_blanks_and_comments();
        begin_ = at_;
        if (at_ == text_.size()) {
            return {};
        }
        if (text_[at_] == '"' || text_[at_] == '\'') {
            at_ = end_of_string();
        } else if (is_mark(text_[at_])) {
            ++at_;
        } else {
            while (at_ < text_.size() && !is_blank(text_[at_]) && !is_mark(text_[at_])) {
                ++at_;
            }
        }
        return text_.substr(begin_, at_ - begin_);
    }

    /// Where the last word begins.
    std::size_t begin() const { return begin_; }

  private:
    bool at(std::string_view sign) const { return text_.substr(at_, sign.size()) == sign; }

    void skip_past(std::string_view sign) {
        const std::size_t found = text_.find(sign, at_);
        at_ = found == std::string_view::npos ? text_.size() : found + sign.size();
    }

    void skip_blanks_and_comments() {
        for (;;) {
            while (at_ < text_.size() && is_blank(text_[at_])) {
                ++at_;
            }
            if (at("//")) {
                skip_past("\n");
            } else if (at("/*")) {
                skip_past("*/");
            } else {
                return;
            }
        }
    }

    std::size_t end_of_string() const {
        const char quote = text_[at_];
        for (std::size_t end = at_ + 1; (end = text_.find(quote, end)) != std::string_view::npos;) {
            ++end;
            if (quote == '\'' || !is_escaped(end - 1)) {
                return end;
            }
        }
        return text_.size();
    }

    bool is_escaped(std::size_t position) const {
        const std::size_t before = text_.find_last_not_of('\\', position - 1);
        return (position - before) % 2 == 0;
    }

    std::string_view text_;
    std::size_t at_ = 0;
    std::size_t begin_ = 0;
};

bool may_hold_uses(std::string_view keyword) {
    return keyword == "container" || keyword == "list" || keyword == "leaf";
}

std::string unquoted(std::string_view word) {
    const bool is_quoted = word.size() > 1 && (word[0] == '"' || word[0] == '\'');
    return std::string(is_quoted ? word.substr(1, word.size() - 2) : word);
}

/// The prefix under which a module imports validation-point; empty when it does not.
std::string prefix_of_extensions(std::string_view text) {
    Words words(text);
    for (std::string_view word = words.next(); !word.empty(); word = words.next()) {
        if (word != "import") {
            continue;
        }
        const std::string module = unquoted(words.next());
        std::string prefix;
        for (word = words.next(); !word.empty() && word != "}" && word != ";";) {
            const bool is_prefix = word == "prefix";
            word = words.next();
            if (is_prefix) {
                prefix = unquoted(word);
            }
        }
        if (module == "validation-point") {
            return prefix;
        }
    }
    return {};
}

}  // namespace

void require_plain_uses(const std::string& file) {
    const std::string text = read_named_file(file);
    const std::string validate = prefix_of_extensions(text) + ":validate";
    std::vector<std::string_view> around;  // the keywords of the statements around the next one
    std::string_view keyword;
    Words words(text);
    for (std::string_view word = words.next(); !word.empty(); word = words.next()) {
        if (word == "{") {
            around.push_back(keyword);
            keyword = {};
        } else if (word == "}" || word == ";") {
            if (word == "}" && !around.empty()) {
                around.pop_back();
            }
            keyword = {};
        } else if (keyword.empty()) {
            keyword = word;
            if (keyword == validate && (around.empty() || !may_hold_uses(around.back()))) {
                throw InputError(SourceText(file, text).location(words.begin()),
                                 validate + " is under " +
                                     std::string(around.empty() ? "nothing" : around.back()) +
                                     "; move it into the container, list or leaf itself");
            }
        }
    }
}
