// Results come in order, whichever thread is done first.
#include "checking/ordered_work.h"

#include <gmock/gmock.h>

#include <future>

namespace {

using Make = OrderedWork<std::size_t>::Make;

OrderedWork<std::size_t> counting(std::size_t count, std::size_t threads, const Make& make) {
    OrderedWork<std::size_t> work;
    work.count = count;
    work.threads = threads;
    work.make_worker = [make] { return make; };
    work.take = [](std::size_t) {};
    return work;
}

std::optional<std::size_t> itself(std::size_t number) {
    return number;
}

TEST(OrderedWork, WaitsForASlowResultInsteadOfHoldingAllOthers) {
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
        return itself(number);
    };
    EXPECT_EQ(work_in_order(counting(100, 2, make)), 100U);
}

TEST(OrderedWork, TakesEachResultOnceInOrderUntilItIsStoppedOrSomethingThrows) {
    for (const std::size_t threads : {1, 3}) {
        std::atomic<bool> stop{false};
        std::size_t taken = 0;
        const auto take = [&](std::size_t result) { EXPECT_EQ(result, taken++); };
        OrderedWork<std::size_t> work = counting(500, threads, [&](std::size_t number) {
            stop = stop || number == 300;
            return number == 300 ? std::nullopt : itself(number);
        });
        work.take = take;
        work.stop = &stop;
        EXPECT_EQ(work_in_order(work), 300U);
        EXPECT_EQ(taken, 300U);

        taken = 0;
        work = counting(50, threads, [](std::size_t number) {
            return number < 20 ? itself(number) : throw std::out_of_range(std::to_string(number));
        });
        work.take = take;
        EXPECT_THROW(work_in_order(work), std::out_of_range);
        EXPECT_EQ(taken, 20U) << "those before it are taken";

        work = counting(500, threads, itself);
        work.take = [](std::size_t) { throw std::runtime_error("a full disk"); };
        EXPECT_THROW(work_in_order(work), std::runtime_error);
    }
}

}  // namespace
