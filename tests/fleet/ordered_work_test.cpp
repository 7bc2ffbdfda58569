// Reports come in order, whichever thread is done first.
#include "fleet/ordered_work.h"

#include <gmock/gmock.h>

#include <future>
#include <numeric>

namespace {

const std::atomic<bool> kGoOn{false};

std::optional<Report> numbered(std::size_t number) {
    Report report;
    report.requests = number;
    return report;
}

TEST(OrderedWork, WaitsForASlowReportInsteadOfHoldingAllOthers) {
    std::promise<void> rest_waits;
    std::atomic<std::size_t> begun{0};
    const auto make = [&](std::size_t number) {
        if (++begun == 16) {  // no other may be begun before the first one is done
            rest_waits.set_value();
        }
        if (number == 0) {
            rest_waits.get_future().wait();
            EXPECT_EQ(begun, 16U);
        }
        return numbered(number);
    };
    std::size_t taken = 0;
    work_in_order({100, 2, make, [&](const Report&) { ++taken; }, kGoOn});
    EXPECT_EQ(taken, 100U);
}

TEST(OrderedWork, TakesEachReportOnceInOrderUntilItIsStoppedOrSomethingThrows) {
    std::vector<std::size_t> first(300);
    std::iota(first.begin(), first.end(), 0);
    for (const std::size_t threads : {1, 3}) {
        std::atomic<bool> stop{false};
        std::vector<std::size_t> taken;
        const auto take = [&](const Report& report) { taken.push_back(report.requests); };
        const auto stop_at_300 = [&](std::size_t number) {
            stop = stop || number == 300;
            return number == 300 ? std::nullopt : numbered(number);
        };
        EXPECT_EQ(work_in_order({500, threads, stop_at_300, take, stop}), 300U);
        EXPECT_EQ(taken, first);
        const auto fail = [](const Report&) { throw std::runtime_error("a full disk"); };
        EXPECT_THROW(work_in_order({500, threads, numbered, fail, kGoOn}), std::runtime_error);
    }
}

}  // namespace
