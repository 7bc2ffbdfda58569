/// What a refusing rule compared.
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "call_hook.h"
#include "checking/report.h"
#include "configuration/configuration.h"

/// The platform calls of one request that may read a value. To note one costs a copy of its path:
/// what it read is looked up only when the rule refuses.
class ReadLog {
  public:
    /// Needs room once for what the requests of one thread read, one after the other.
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

/// Adds to `finding` on `node` of `candidate` the values behind it, each once: those of the leaves
/// and counted entries that the rule read, the node's own, and the keys of the instance that it
/// conflicts with. Where the candidate's file has what a rule on more than a value read last, the
/// finding's place is there. A path that cannot be read for its names becomes the finding's note.
void add_values(const Configuration& candidate, const Configuration& running,
                const local_platform::Node& node, const ReadLog& log, Finding& finding);
