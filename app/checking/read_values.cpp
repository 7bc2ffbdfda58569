#include "checking/read_values.h"

#include <set>

#include "configuration/cli_path.h"
#include "keypath.h"

using local_platform::Node;
using local_platform::NodeKind;

namespace {

constexpr const char* kBadName =
    ": a name with a blank, tab, line end, brace or quote cannot be written in a path. Use a name "
    "without them.";

/// `words` behind `start` and the blank that follows it; nothing when they begin otherwise.
std::optional<std::string_view> rest_behind(std::string_view words, std::string_view start) {
    if (words.substr(0, start.size()) != start) {
        return std::nullopt;
    }
    words.remove_prefix(start.size());
    if (words.empty()) {
        return words;
    }
    return words.front() == ' ' ? std::optional(words.substr(1)) : std::nullopt;
}

/// The node that an operator types as `words` below `node`; null when there is none.
const Node* find_place(const Node& node, std::string_view words) {
    if (words.empty()) {
        return &node;
    }
    const bool is_list = node.schema->kind == NodeKind::list && !node.is_entry();
    for (const auto& child : node.children) {
        const auto rest =
            child == nullptr ? std::nullopt
                             : rest_behind(words, is_list ? cli_keys(*child) : child->schema->name);
        const Node* const found = rest ? find_place(*child, *rest) : nullptr;
        if (found != nullptr) {
            return found;
        }
    }
    return nullptr;
}

/// What `message` has between single quotes.
std::string_view quoted_part(std::string_view message) {
    const std::size_t open = message.find('\'');
    const std::size_t close = message.rfind('\'');
    return open == close ? std::string_view() : message.substr(open + 1, close - open - 1);
}

class ValueList {
  public:
    explicit ValueList(std::vector<ReadValue>& values) : values_(values) {}

    void add_leaf(const char* datastore, const Node& leaf) {
        if (leaf.text.empty() || !seen_.insert(&leaf).second) {
            return;
        }
        confd_hkeypath_t kp;
        local_platform::fill_keypath(leaf, kp);
        values_.push_back({datastore,
                           local_platform::keypath_text(kp),
                           cli_path(leaf),
                           std::string(leaf.schema->is_encrypted ? kSecretValue : leaf.text),
                           {}});
    }

    void add_keys(const char* datastore, const Node& entry) {
        for (const std::string& key : entry.schema->keys) {
            const auto position = static_cast<std::size_t>(entry.schema->child_index(key));
            add_leaf(datastore, *entry.children[position]);
        }
    }

    void add_read(const char* datastore, const Node& node, bool is_count) {
        if (node.schema->kind == NodeKind::leaf) {
            add_leaf(datastore, node);
        } else if (is_count) {
            for (const auto& entry : node.children) {
                add_keys(datastore, *entry);
            }
        }
    }

  private:
    std::vector<ReadValue>& values_;
    std::set<const Node*> seen_;
};

}  // namespace

void ReadLog::clear() {
    reads_.clear();
    paths_.clear();
}

void ReadLog::note(const local_platform::Call& call) {
    if (call.socket < 0 || call.argument.empty()) {
        return;
    }
    reads_.push_back({call.operation.substr(0, 4) == "cdb_",
                      call.operation == "maapi_num_instances", paths_.size(),
                      call.argument.size()});
    paths_ += call.argument;
}

std::string_view ReadLog::path(const Read& read) const {
    return std::string_view(paths_).substr(read.begin, read.size);
}

void add_values(const ReadTrees& trees, const Node& node, const ReadLog& log, Finding& finding) {
    constexpr const char* kCandidate = "candidate";
    ValueList values(finding.values);
    for (const ReadLog::Read& read : log.reads()) {
        const auto& tree = read.is_running ? trees.running : trees.candidate;
        try {
            const Node* const found = tree.find(log.path(read));
            if (found != nullptr) {
                values.add_read(read.is_running ? "running" : kCandidate, *found, read.is_count);
            }
        } catch (const local_platform::PlatformError&) {
            finding.note = "The rule could not read " + std::string(log.path(read)) + kBadName;
        }
    }
    if (node.schema->kind == NodeKind::leaf) {
        values.add_leaf(kCandidate, node);
    }
    const std::string_view place = quoted_part(finding.message);
    const Node* const other = place.empty() ? nullptr : find_place(trees.candidate.root(), place);
    if (other != nullptr && other->is_entry()) {
        values.add_keys(kCandidate, *other);
    }
}
