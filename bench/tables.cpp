#include "tables.h"

#include <cmath>
#include <functional>
#include <iomanip>
#include <ostream>

namespace {

constexpr double kMicrosecond = 1e3;
constexpr double kMillisecond = 1e6;
constexpr double kKibibyte = 1024.0;

std::string at(const char* name, int instances) {
    return std::string(name) + "/" + std::to_string(instances);
}

double kibibytes(const HeapUse& use) {
    return static_cast<double>(use.peak_bytes) / kKibibyte;
}

/// b of time = a * instances^b, by least squares over the logarithms.
double exponent(const Results& results, const std::vector<CheckCounts>& checks, const char* name) {
    double x_sum = 0;
    double y_sum = 0;
    double xx_sum = 0;
    double xy_sum = 0;
    for (const CheckCounts& check : checks) {
        const double x = std::log(check.instances);
        const double y = std::log(results.nanoseconds(at(name, check.instances)));
        x_sum += x;
        y_sum += y;
        xx_sum += x * x;
        xy_sum += x * y;
    }
    const auto count = static_cast<double>(checks.size());
    return (count * xy_sum - x_sum * y_sum) / (count * xx_sum - x_sum * x_sum);
}

}  // namespace

void print_rules(std::ostream& out, const Results& results, const std::vector<RuleCounts>& rules) {
    const double round_trip = results.nanoseconds("round_trip");
    out << std::fixed << std::setprecision(2) << "Round trip: " << round_trip / kMicrosecond
        << " µs.\n\n"
        << "| Rule | Request, µs | Calls | of them MAAPI, CDB | Bare calls, µs | Own, µs | Floor, "
           "µs "
           "| Own / floor | Paths | Own allocations | Platform's |\n"
        << "|---|--:|--:|--:|--:|--:|--:|--:|--:|--:|--:|\n";
    for (const RuleCounts& rule : rules) {
        const double request = results.nanoseconds("request/" + rule.selector);
        const double bare = results.nanoseconds("bare/" + rule.selector);
        const double floor = static_cast<double>(rule.socket_calls) * round_trip;
        const double own = request - bare;
        out << "| `" << rule.selector << "` | " << request / kMicrosecond << " | " << rule.calls
            << " | " << rule.socket_calls << " | " << bare / kMicrosecond << " | "
            << own / kMicrosecond << " | " << floor / kMicrosecond << " | " << 100 * own / floor
            << " % | " << rule.paths << " | " << rule.allocations << " | " << rule.bare_allocations
            << " |\n";
    }
}

void print_checks(std::ostream& out, const Results& results,
                  const std::vector<CheckCounts>& checks) {
    out << std::fixed << std::setprecision(2)
        << "| Instances | Requests | Platform calls | All rules, ms | a request, µs "
           "| peak heap, KiB | libyang, uniqueness, ms | peak heap, KiB | libyang, all it can, ms "
           "| peak heap, KiB | Uniqueness / ours | All it can / ours |\n"
        << "|--:|--:|--:|--:|--:|--:|--:|--:|--:|--:|--:|--:|\n";
    for (const CheckCounts& check : checks) {
        const double ours = results.nanoseconds(at("check", check.instances));
        const double unique = results.nanoseconds(at("unique", check.instances));
        const double every = results.nanoseconds(at("every", check.instances));
        out << "| " << check.instances << " | " << check.requests << " | " << check.calls << " | "
            << ours / kMillisecond << " | "
            << ours / static_cast<double>(check.requests) / kMicrosecond << " | "
            << kibibytes(check.check) << " | " << unique / kMillisecond << " | "
            << kibibytes(check.unique) << " | " << every / kMillisecond << " | "
            << kibibytes(check.every) << " | " << unique / ours << " | " << every / ours << " |\n";
    }
    const CheckCounts& most = checks.back();
    const double a_call = 1.0 / static_cast<double>(most.calls);
    out << "\nAt " << most.instances
        << " instances a platform call with all the plug-in's work for it takes "
        << results.nanoseconds(at("check", most.instances)) * a_call
        << " ns. To be ten times faster than libyang's uniqueness alone, it could take "
        << results.nanoseconds(at("unique", most.instances)) / 10 * a_call << " ns; as fast, "
        << results.nanoseconds(at("unique", most.instances)) * a_call << " ns.\n";
}

void print_forms(std::ostream& out, const Results& results, const std::vector<std::string>& forms) {
    out << std::fixed << std::setprecision(1) << "| Form | Time, ms |\n|---|--:|\n";
    for (const std::string& form : forms) {
        out << "| " << (form.empty() ? "no `must` at all" : "`" + form + "`") << " | "
            << results.nanoseconds("form/" + form) / kMillisecond << " |\n";
    }
}

void print_growth(std::ostream& out, const Results& results,
                  const std::vector<CheckCounts>& checks) {
    out << std::fixed << std::setprecision(2) << "| | Exponent |\n|---|--:|\n"
        << "| All rules | " << exponent(results, checks, "check") << " |\n"
        << "| libyang, uniqueness | " << exponent(results, checks, "unique") << " |\n"
        << "| libyang, all it can | " << exponent(results, checks, "every") << " |\n";
}

void print_plot_data(std::ostream& out, const Results& results,
                     const std::vector<CheckCounts>& checks) {
    for (const CheckCounts& check : checks) {
        out << check.instances;
        for (const char* name : {"check", "unique", "every"}) {
            out << ' ' << results.nanoseconds(at(name, check.instances)) / kMillisecond;
        }
        out << '\n';
    }
}
