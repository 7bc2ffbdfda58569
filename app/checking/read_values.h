/// What a refusing rule compared.
#pragma once

#include <string>
#include <vector>

#include "call_hook.h"
#include "checking/report.h"
#include "data_tree.h"

/// The platform calls of one request that may read a value. To note one costs a copy of its path:
/// what it read is looked up only when the rule refuses.
class ReadLog {
  public:
    /// What the requests of one thread read, one after the other, needs room once.
    void clear();
    void note(const local_platform::Call& call);

    struct Read {
        bool is_running;  ///< of the running datastore
        bool is_count;    ///< of a list's entries
        std::size_t begin;
        std::size_t size;
    };
    const std::vector<Read>& reads() const { return reads_; }
    std::string_view path(const Read& read) const;

  private:
    std::vector<Read> reads_;
    std::string paths_;
};

/// The trees that a request reads.
struct ReadTrees {
    const local_platform::DataTree& candidate;
    const local_platform::DataTree& running;
};

/// Adds to `finding` on `node` the values behind it, each once: the node's own, those of the leaves
/// and counted entries that the rule read, and those of the place that its message quotes. A path
/// that cannot be read for its names becomes the finding's note.
void add_values(const ReadTrees& trees, const local_platform::Node& node, const ReadLog& log,
                Finding& finding);
