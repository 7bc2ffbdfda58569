// vrrp-valid-bench FOLDER [Google Benchmark's options]: runs every benchmark, its repetitions in
// random order, and writes tables.md and growth.dat into the folder.
#include <deque>
#include <fstream>
#include <iostream>
#include <stdexcept>

#include "bare_calls.h"
#include "call_hook.h"
#include "checking/rule_walk.h"
#include "commands/install_layout.h"
#include "must_model.h"
#include "round_trip.h"
#include "tables.h"
#include "workload.h"

using local_platform::CryptoKey;
using local_platform::Instance;

namespace {

constexpr int kInstances[] = {32, 64, 128, 255, 510};
/// For the forms of `must`: the slowest takes seconds for more.
constexpr int kFormInstances = 255;

const std::vector<std::string> kForms = {
    "",
    "unique-by-family",
    "unique-by-identifier",
    "unique-by-count",
    "unique-by-comparison",
    "unique-by-other-interface",
    "unique-by-preceding",
};
const std::string kFastestForm = "unique-by-family";
const std::string kEveryRule = "every-expressible-rule";

template <typename Work>
void add(const std::string& name, Work work) {
    benchmark::RegisterBenchmark(name.c_str(), [work](benchmark::State& state) {
        for (auto _ : state) {
            work();
        }
    });
}

void require(bool holds, const std::string& what) {
    if (!holds) {
        throw std::runtime_error(what);
    }
}

/// The requests of all rules and their bare calls.
struct RuleBenchmarks {
    explicit RuleBenchmarks(const Transaction& transaction)
        : instance(transaction.candidate.tree, transaction.running.tree, transaction.key),
          requests(rule_requests(transaction.candidate.tree, instance)) {
        for (RuleRequest& request : requests) {
            bare_calls.emplace_back(request);
            BareCalls& bare = bare_calls.back();
            const auto whole_use = heap_use_of([&] { make_request(request); });
            const auto bare_use = heap_use_of([&] { bare.make(); });
            counts.push_back({request.selector, bare.count(), bare.socket_calls(), bare.paths(),
                              whole_use.allocations - bare_use.allocations, bare_use.allocations});
            add("request/" + request.selector, [&request] { make_request(request); });
            add("bare/" + request.selector, [&bare] { bare.make(); });
        }
    }

    Instance instance;
    std::vector<RuleRequest> requests;
    std::deque<BareCalls> bare_calls;
    std::vector<RuleCounts> counts;
};

template <typename Work>
std::size_t count_calls(Work work) {
    std::size_t calls = 0;
    const local_platform::ScopedCallHook hook([&calls](const local_platform::Call&) {
        ++calls;
        return std::optional<local_platform::Answer>();
    });
    work();
    return calls;
}

/// One size of configuration, under the plug-in and under libyang.
struct CheckBenchmarks {
    CheckBenchmarks(const YangModel& model, const local_platform::Host& host, int instances,
                    const CryptoKey& key)
        : workload(make_workload(instances, key)),
          candidate(read(model, workload.candidate)),
          running(read(model, workload.running)),
          transaction{candidate, running, key},
          unique(default_yang_dir(), kFastestForm, workload.candidate),
          every(default_yang_dir(), kEveryRule, workload.candidate) {
        const std::string size = "/" + std::to_string(instances);
        const auto check = [this, &model, &host] {
            Report report;
            walk_candidate({model, host}, transaction, report);
            require(report.findings.empty(), "the plug-in refuses the workload");
            return report.requests;
        };
        const auto pass = [](MustModel& must) {
            require(must.validate(), "libyang refuses the workload");
        };
        counts.instances = instances;
        counts.calls = count_calls(check);
        counts.check = heap_use_of([&] { counts.requests = check(); });
        counts.unique = heap_use_of([&] { pass(unique); });
        counts.every = heap_use_of([&] { pass(every); });
        add("check" + size, check);
        add("unique" + size, [this, pass] { pass(unique); });
        add("every" + size, [this, pass] { pass(every); });
    }

    static Configuration read(const YangModel& model, const std::string& configuration) {
        return model.read(std::make_shared<SourceText>("workload", configuration));
    }

    Workload workload;
    Configuration candidate;
    Configuration running;
    Transaction transaction;
    MustModel unique;
    MustModel every;
    CheckCounts counts;
};

/// A form that lets a conflict pass would be no form of the rule.
void require_refusal(const std::string& module, const std::string& conflict) {
    require(module.empty() || !MustModel(default_yang_dir(), module, conflict).validate(),
            module + " lets a conflict pass");
}

void run(const std::string& folder) {
    const CryptoKey key;
    const YangModel model(default_yang_dir());
    const local_platform::Host host(default_plugin_file());

    std::deque<CheckBenchmarks> checks;
    std::vector<CheckCounts> check_counts;
    for (const int instances : kInstances) {
        checks.emplace_back(model, host, instances, key);
        check_counts.push_back(checks.back().counts);
    }
    const RuleBenchmarks rules(checks.back().transaction);

    const Workload form_workload = make_workload(kFormInstances, key);
    const std::string conflict = make_conflict(kFormInstances, key);
    std::deque<MustModel> forms;
    for (const std::string& form : kForms) {
        require_refusal(form, conflict);
        forms.emplace_back(default_yang_dir(), form, form_workload.candidate);
        add("form/" + form, [&must = forms.back()] { must.validate(); });
    }
    require_refusal(kEveryRule, conflict);

    RoundTrip round_trip;
    add("round_trip", [&round_trip] { round_trip.make(); });

    Results results;
    benchmark::RunSpecifiedBenchmarks(&results);
    std::ofstream tables(folder + "/tables.md");
    print_rules(tables, results, rules.counts);
    tables << '\n';
    print_checks(tables, results, check_counts);
    tables << '\n';
    print_growth(tables, results, check_counts);
    tables << '\n';
    print_forms(tables, results, kForms);
    std::ofstream plot_data(folder + "/growth.dat");
    print_plot_data(plot_data, results, check_counts);
}

}  // namespace

int main(int argc, char** argv) {
    if (argc < 2) {
        std::cerr << "usage: vrrp-valid-bench FOLDER [Google Benchmark's options]\n";
        return EXIT_FAILURE;
    }
    const std::string folder = argv[1];
    // The repetitions of what is compared lie side by side, so that both see the same machine.
    std::string interleave = "--benchmark_enable_random_interleaving=true";
    std::string repeat = "--benchmark_repetitions=15";
    std::string shortly = "--benchmark_min_time=0.02";
    std::vector<char*> arguments = {argv[0], interleave.data(), repeat.data(), shortly.data()};
    arguments.insert(arguments.end(), argv + 2, argv + argc);
    auto count = static_cast<int>(arguments.size());
    benchmark::Initialize(&count, arguments.data());
    if (benchmark::ReportUnrecognizedArguments(count, arguments.data())) {
        return EXIT_FAILURE;
    }
    try {
        run(folder);
    } catch (const std::exception& error) {
        std::cerr << "vrrp-valid-bench: " << error.what() << '\n';
        return EXIT_FAILURE;
    }
}
