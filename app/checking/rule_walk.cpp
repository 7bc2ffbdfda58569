#include "checking/rule_walk.h"

#include <algorithm>
#include <map>
#include <memory>
#include <unordered_set>

#include "checking/ordered_work.h"
#include "checking/read_values.h"
#include "checking/requests.h"
#include "checking/rule_message.h"
#include "errors/input_error.h"
#include "trees/cli_path.h"

using local_platform::Node;

namespace {

/// What a thread takes at a time: enough that taking costs nothing, and few enough that the last
/// ones end together.
constexpr std::size_t kBlockSize = 16;

/// What came of the requests of a block.
struct BlockResult {
    std::size_t requests = 0;
    std::vector<Finding> findings;
};

/// How many findings of each rule the report holds; the threads need describe no more.
using Kept = std::map<std::string, std::atomic<std::size_t>>;

/// Makes requests on an instance of its own.
class Worker {
  public:
    Worker(const RuleWalk& walk, const Transaction& transaction, const Kept& kept)
        : walk_(walk),
          candidate_(transaction.candidate),
          running_(transaction.running),
          kept_(kept),
          instance_(candidate_.tree, running_.tree, transaction.key) {}

    BlockResult make_block(const Request* first, const Request* end) {
        BlockResult result;
        for (const Request* request = first; request != end; ++request) {
            make(*request, result.findings);
            ++result.requests;
        }
        return result;
    }

  private:
    local_platform::Response ask_and_watch(const Request& request) {
        log_.clear();
        const local_platform::ScopedCallHook watch([this](const local_platform::Call& call) {
            note(call, log_);
            return std::optional<local_platform::Answer>();
        });
        return ask(walk_.host, instance_, request);
    }

    bool is_full(const Rule& rule) const { return kept_.at(rule.name) >= walk_.max_findings; }

    /// A rule that refused its last request is watched, since it is likely to refuse the next one:
    /// only the first of several has to be asked again, and a clean check pays nothing.
    void make(const Request& request, std::vector<Finding>& findings) {
        const Rule& rule = *request.rule;
        const bool is_watched = !refusing_.empty() && refusing_.count(&rule) > 0 && !is_full(rule);
        local_platform::Response response =
            is_watched ? ask_and_watch(request) : ask(walk_.host, instance_, request);
        if (response.result == CONFD_OK) {
            if (is_watched) {
                refusing_.erase(&rule);
            }
            return;
        }
        refusing_.insert(&rule);
        Finding& finding = findings.emplace_back();
        finding.severity =
            response.result == CONFD_VALIDATION_WARN ? Severity::warning : Severity::error;
        finding.rule = rule.name;
        if (is_full(rule)) {
            return;
        }
        if (!is_watched) {
            ask_and_watch(request);
        }
        describe(request, response, finding);
    }

    void describe(const Request& request, const local_platform::Response& response,
                  Finding& finding) {
        const Node& node = *request.node;
        finding.path = keypath_of(node);
        if (response.result == CONFD_ERR && response.messages.empty() && log_.empty()) {
            throw InputError(place_of(*request.rule) + ": the plug-in does not know the rule \"" +
                             finding.rule + "\", which the model uses at " + finding.path +
                             "; give the plug-in that belongs to the model with --plugin");
        }
        finding.cli_path = cli_path(node);
        finding.message = message_of(response, node);
        finding.help = help_for(*request.rule, finding.message);
        finding.location = finding.node_location = candidate_.location_of(node);
        finding.instance = instance_around(node);
        finding.cause = cause_of(finding);
        add_values(candidate_, running_, node, log_, finding);
    }

    /// What a finding has in common with others of its layer-3 interface.
    std::string cause_of(const Finding& finding) {
        const auto reads_interface = [&](const Read& read) {
            return reads_layer3_interface(read.path, *finding.instance);
        };
        if (!finding.instance || std::none_of(log_.begin(), log_.end(), reads_interface)) {
            return {};
        }
        const auto [cause, is_new] = causes_.try_emplace(finding.instance->interface);
        if (is_new) {
            cause->second = missing_interface(candidate_.tree, *finding.instance);
        }
        return cause->second;
    }

    const RuleWalk& walk_;
    const Configuration& candidate_;
    const Configuration& running_;
    const Kept& kept_;
    local_platform::Instance instance_;
    std::unordered_set<const Rule*> refusing_;
    std::map<std::string, std::string> causes_;  ///< by VRRP interface
    ReadLog log_;
};

/// Puts what came of a block into the report.
void add_block(const RuleWalk& walk, BlockResult block, Kept& kept, Report& report) {
    for (Finding& finding : block.findings) {
        if (kept[finding.rule]++ < walk.max_findings) {
            report.findings.push_back(std::move(finding));
            continue;
        }
        Omitted& omitted = report.omitted_of(finding.rule);
        ++(finding.severity == Severity::error ? omitted.errors : omitted.warnings);
    }
    report.requests += block.requests;
    if (walk.on_progress) {
        walk.on_progress(report);
    }
}

}  // namespace

void walk_candidate(const RuleWalk& walk, const Transaction& transaction, Report& report) {
    const std::vector<Request> requests =
        requests_of(walk.model.rules(), walk.host, transaction.candidate.tree,
                    transaction.running.tree, walk.rule_names);
    Kept kept;
    for (const Request& request : requests) {
        kept[request.rule->name] = 0;
    }
    OrderedWork<BlockResult> work;
    work.count = (requests.size() + kBlockSize - 1) / kBlockSize;
    work.threads = walk.threads;
    work.stop = walk.stop;
    work.make_worker = [&] {
        const auto worker = std::make_shared<Worker>(walk, transaction, kept);
        return [&, worker](std::size_t block) {
            const Request* const first = requests.data() + block * kBlockSize;
            const Request* const end = requests.data() + requests.size();
            return std::optional(worker->make_block(first, std::min(first + kBlockSize, end)));
        };
    };
    work.take = [&](BlockResult block) { add_block(walk, std::move(block), kept, report); };
    if (work_in_order(work) < work.count) {
        throw Interrupted();
    }
}
