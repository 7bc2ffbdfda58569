#include "checking/rule_walk.h"

#include <algorithm>
#include <chrono>
#include <map>
#include <mutex>
#include <optional>
#include <system_error>
#include <thread>
#include <unordered_map>
#include <unordered_set>

#include "checking/read_values.h"
#include "checking/rule_message.h"
#include "checking/vrrp_instances.h"
#include "configuration/cli_path.h"
#include "errors/input_error.h"
#include "keypath.h"

using local_platform::Node;
using local_platform::NodeKind;

namespace {

/// What a thread takes at a time: enough that taking costs nothing, and few enough that the last
/// ones end together.
constexpr std::size_t kBlockSize = 16;

struct Request {
    const Rule* use;
    const Node* node;
};

bool same_subtree(const Node* one, const Node* other) {
    if (one == nullptr || other == nullptr) {
        return one == other;
    }
    return one->text == other->text &&
           std::equal(one->children.begin(), one->children.end(), other->children.begin(),
                      other->children.end(),
                      [](const auto& a, const auto& b) { return same_subtree(a, b); });
}

std::string path_of(const Node& node) {
    confd_hkeypath_t kp;
    local_platform::fill_keypath(node, kp);
    return local_platform::keypath_text(kp);
}

/// The requests of a candidate.
class RequestList {
  public:
    RequestList(const RuleWalk& walk, const Transaction& transaction)
        : walk_(walk), running_(transaction.running) {
        visit(transaction.candidate.root());
    }

    std::vector<Request> requests;

  private:
    void require_served(const Rule& use) const {
        const std::string& served = walk_.host.validation_point();
        if (use.point != served) {
            throw InputError("the model uses the validation point \"" + use.point +
                             "\", the plug-in serves \"" + served +
                             "\": give the plug-in that belongs to the model with --plugin");
        }
    }

    bool is_wanted(const Rule& use, const Node& node) const {
        if (!walk_.rule_names.empty() && walk_.rule_names.count(use.name) == 0) {
            return false;
        }
        return !use.only_when_changed || !same_subtree(&node, running_.find(path_of(node)));
    }

    void visit(const Node& node) {
        const bool is_whole_list = node.schema->kind == NodeKind::list && !node.is_entry();
        if (!is_whole_list) {
            for (const Rule& use : walk_.model.uses(*node.schema)) {
                require_served(use);
                if (is_wanted(use, node)) {
                    requests.push_back({&use, &node});
                }
            }
        }
        for (const auto& child : node.children) {
            if (child != nullptr) {
                visit(*child);
            }
        }
    }

    const RuleWalk& walk_;
    const local_platform::DataTree& running_;
};

using Clock = std::chrono::steady_clock;
using RuleTimes = std::unordered_map<const Rule*, Clock::duration>;

/// Puts the findings of all threads into the report, in the order of their requests.
class Collector {
  public:
    Collector(const RuleWalk& walk, const std::vector<Request>& requests, Report& report)
        : walk_(walk), requests_(requests), report_(report) {}

    /// The first request of the next block; the number of requests when there is none.
    std::size_t take() {
        const std::lock_guard lock(mutex_);
        const bool is_stopped = failure_ != nullptr || (walk_.stop != nullptr && *walk_.stop);
        const std::size_t first = is_stopped ? requests_.size() : taken_;
        taken_ = std::min(requests_.size(), first + kBlockSize);
        return first;
    }

    std::size_t end_of(std::size_t first) const {
        return std::min(requests_.size(), first + kBlockSize);
    }

    /// Whether the report holds all that it may of the rule, so that a finding only counts.
    bool is_full(const std::string& rule) {
        const std::lock_guard lock(mutex_);
        return kept_[rule] >= walk_.max_findings;
    }

    void finish(std::size_t first, std::vector<Finding> findings) {
        const std::lock_guard lock(mutex_);
        finished_[first] = std::move(findings);
        while (!finished_.empty() && finished_.begin()->first == report_.requests) {
            for (Finding& finding : finished_.begin()->second) {
                keep(finding);
            }
            report_.requests = end_of(report_.requests);
            finished_.erase(finished_.begin());
            if (walk_.on_progress) {
                walk_.on_progress(report_);
            }
        }
    }

    void add_times(const RuleTimes& times) {
        const std::lock_guard lock(mutex_);
        for (const auto& [use, time] : times) {
            report_.rule_seconds[use->name] += std::chrono::duration<double>(time).count();
        }
    }

    /// What a request threw; that of the first one counts.
    void fail(std::size_t first, std::exception_ptr failure) {
        const std::lock_guard lock(mutex_);
        if (failure_ == nullptr || first < failed_) {
            failure_ = std::move(failure);
            failed_ = first;
        }
    }

    void require_all() const {
        if (failure_ != nullptr) {
            std::rethrow_exception(failure_);
        }
        if (report_.requests < requests_.size()) {
            throw Interrupted();
        }
    }

  private:
    void keep(Finding& finding) {
        if (kept_[finding.rule]++ < walk_.max_findings) {
            report_.findings.push_back(std::move(finding));
            return;
        }
        Omitted& omitted = report_.omitted_of(finding.rule);
        ++(finding.severity == Severity::error ? omitted.errors : omitted.warnings);
    }

    const RuleWalk& walk_;
    const std::vector<Request>& requests_;
    Report& report_;
    std::mutex mutex_;
    std::size_t taken_ = 0;
    std::map<std::size_t, std::vector<Finding>> finished_;  ///< by first request, out of order
    std::map<std::string, std::size_t> kept_;               ///< by rule
    std::exception_ptr failure_;
    std::size_t failed_ = 0;
};

/// Makes requests on an instance of its own.
class Worker {
  public:
    Worker(const RuleWalk& walk, const Transaction& transaction, Collector& collector)
        : walk_(walk),
          trees_{transaction.candidate, transaction.running},
          collector_(collector),
          instance_(transaction.candidate, transaction.running, transaction.key) {}

    void work(const std::vector<Request>& requests) {
        for (std::size_t first = 0; (first = collector_.take()) < requests.size();) {
            try {
                std::vector<Finding> findings;
                for (std::size_t i = first; i < collector_.end_of(first); ++i) {
                    walk_.times_rules ? make_timed(requests[i], findings)
                                      : make(requests[i], findings);
                }
                collector_.finish(first, std::move(findings));
            } catch (...) {
                collector_.fail(first, std::current_exception());
            }
        }
        collector_.add_times(times_);
    }

  private:
    void make_timed(const Request& request, std::vector<Finding>& findings) {
        const auto start = Clock::now();
        make(request, findings);
        times_[request.use] += Clock::now() - start;
    }

    local_platform::Response ask(const Request& request) {
        confd_hkeypath_t kp;
        local_platform::fill_keypath(*request.node, kp);
        confd_value_t newval = request.node->value();
        return walk_.host.validate(instance_, request.use->name, kp, newval);
    }

    local_platform::Response ask_and_watch(const Request& request) {
        log_.clear();
        const local_platform::ScopedCallHook watch([this](const local_platform::Call& call) {
            log_.note(call);
            return std::optional<local_platform::Answer>();
        });
        return ask(request);
    }

    /// A rule that refused its last request is watched, since it is likely to refuse the next one:
    /// only the first of several has to be asked again, and a clean check pays nothing.
    void make(const Request& request, std::vector<Finding>& findings) {
        const std::string& rule = request.use->name;
        const bool is_watched =
            !refusing_.empty() && refusing_.count(request.use) > 0 && !collector_.is_full(rule);
        local_platform::Response response = is_watched ? ask_and_watch(request) : ask(request);
        if (response.result == CONFD_OK) {
            if (is_watched) {
                refusing_.erase(request.use);
            }
            return;
        }
        refusing_.insert(request.use);
        Finding& finding = findings.emplace_back();
        finding.severity =
            response.result == CONFD_VALIDATION_WARN ? Severity::warning : Severity::error;
        finding.rule = rule;
        if (collector_.is_full(rule)) {
            return;
        }
        if (!is_watched) {
            ask_and_watch(request);
        }
        describe(request, response, finding);
    }

    void describe(const Request& request, const local_platform::Response& response,
                  Finding& finding) {
        finding.path = path_of(*request.node);
        finding.cli_path = cli_path(*request.node);
        finding.instance = instance_around(*request.node);
        finding.message = response.messages.empty()
                              ? "the rule refuses " + finding.path + " without a message."
                              : response.messages.back();
        finding.help = help_for(*request.use, finding.message);
        add_values(trees_, *request.node, log_, finding);
    }

    const RuleWalk& walk_;
    ReadTrees trees_;
    Collector& collector_;
    local_platform::Instance instance_;
    std::unordered_set<const Rule*> refusing_;
    RuleTimes times_;
    ReadLog log_;
};

}  // namespace

void walk_candidate(const RuleWalk& walk, const Transaction& transaction, Report& report) {
    const RequestList list(walk, transaction);
    Collector collector(walk, list.requests, report);
    const auto work = [&] {
        try {
            Worker(walk, transaction, collector).work(list.requests);
        } catch (...) {
            collector.fail(0, std::current_exception());
        }
    };
    std::vector<std::thread> others;
    const std::size_t blocks = list.requests.size() / kBlockSize + 1;
    try {
        for (std::size_t i = 1; i < std::min(walk.threads, blocks); ++i) {
            others.emplace_back(work);
        }
    } catch (const std::system_error&) {
        // The threads that there are do the work.
    }
    work();
    for (std::thread& other : others) {
        other.join();
    }
    collector.require_all();
}
