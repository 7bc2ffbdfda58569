#include "checking/read_values.h"

#include <set>

#include "trees/cli_path.h"

using local_platform::Node;
using local_platform::NodeKind;

namespace {

constexpr const char* kBadName =
    ": a name with a blank, tab, line end, brace or quote cannot be written in a path. Use a name "
    "without them.";

/// The values of a finding, each once.
class ValueList {
  public:
    ValueList(const Configuration& candidate, const Configuration& running, Finding& finding)
        : candidate_(candidate), running_(running), values_(finding.values) {}

    void add_leaf(bool is_running, const Node& leaf) {
        if (leaf.text.empty() || !seen_.insert(&leaf).second) {
            return;
        }
        values_.push_back({is_running ? "running" : "candidate", keypath_of(leaf), cli_path(leaf),
                           std::string(leaf.schema->is_encrypted ? kSecretValue : leaf.text),
                           of(is_running).location_of(leaf)});
    }

    void add_keys(bool is_running, const Node& entry) {
        for (const std::string& key : entry.schema->keys) {
            const auto position = static_cast<std::size_t>(entry.schema->child_index(key));
            add_leaf(is_running, *entry.children[position]);
        }
    }

    /// Adds what a rule read at `path`, and keeps which place that is. Throws PlatformError when it
    /// cannot have been read.
    void add_read(bool is_running, bool is_count, std::string_view path) {
        const Node* const found = of(is_running).tree.find(path);
        if (found != nullptr && found->schema->kind == NodeKind::leaf) {
            add_leaf(is_running, *found);
            last_read_ = is_running ? last_read_ : candidate_.location_of(*found);
        } else if (found != nullptr && is_count) {
            for (const Node* const entry : found->children) {
                add_keys(is_running, *entry);
                last_read_ = candidate_.location_of(*entry);
            }
        }
    }

    /// The place of what was read last of the candidate.
    const Location& last_read() const { return last_read_; }

  private:
    const Configuration& of(bool is_running) const { return is_running ? running_ : candidate_; }

    const Configuration& candidate_;
    const Configuration& running_;
    std::vector<ReadValue>& values_;
    std::set<const Node*> seen_;
    Location last_read_;
};

}  // namespace

void note(const local_platform::Call& call, ReadLog& log) {
    if (call.socket >= 0 && !call.argument.empty()) {
        log.push_back({call.operation.substr(0, 4) == "cdb_",
                       call.operation == "maapi_num_instances", std::string(call.argument)});
    }
}

void add_values(const Configuration& candidate, const Configuration& running, const Node& node,
                const ReadLog& log, Finding& finding) {
    ValueList values(candidate, running, finding);
    bool has_read_table = false;
    for (const auto& [is_running, is_count, path] : log) {
        has_read_table = has_read_table || reads_instance_table(path);
        try {
            values.add_read(is_running, is_count, path);
        } catch (const local_platform::PlatformError&) {
            finding.note = "The rule could not read " + path + kBadName;
        }
    }
    if (node.schema->kind == NodeKind::leaf) {
        values.add_leaf(false, node);
    }
    // A leaf, or an entry of keys alone, is itself what is wrong.
    const bool is_value = node.schema->children.size() == node.schema->keys.size();
    if (!is_value && values.last_read().file == candidate.name()) {
        finding.location = values.last_read();
    }
    const Node* const other = has_read_table && finding.instance
                                  ? conflicting_instance(candidate.tree, *finding.instance)
                                  : nullptr;
    if (other != nullptr) {
        values.add_keys(false, *other);
    }
}
