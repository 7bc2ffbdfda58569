/// Results made by several threads and taken in order.
#pragma once

#include <atomic>
#include <condition_variable>
#include <cstddef>
#include <exception>
#include <functional>
#include <map>
#include <mutex>
#include <optional>
#include <system_error>
#include <thread>
#include <vector>

template <typename Result>
struct OrderedWork {
    /// Makes the result of a number; nothing when it was stopped.
    using Make = std::function<std::optional<Result>(std::size_t)>;

    std::size_t count = 0;                    ///< of the results to make
    std::size_t threads = 1;                  ///< that make them, at most
    std::function<Make()> make_worker;        ///< called once on each thread
    std::function<void(Result)> take;         ///< gets every result, in order, one at a time
    const std::atomic<bool>* stop = nullptr;  ///< once true, no result is begun; may be null
};

/// Makes and takes the results, and returns how many were taken. Never holds more than a few for
/// each thread, however long the first one takes. Throws what the first one that fails throws, once
/// those before it are taken, and what `take` throws.
template <typename Result>
class OrderedWorkers {
  public:
    explicit OrderedWorkers(const OrderedWork<Result>& work) : work_(work) {}

    std::size_t run() {
        std::vector<std::thread> others;
        try {
            for (std::size_t i = 1; i < work_.threads && i < work_.count; ++i) {
                others.emplace_back([this] { run_one(); });
            }
        } catch (const std::system_error&) {
            // The threads that there are do the work.
        }
        run_one();
        for (std::thread& other : others) {
            other.join();
        }
        if (failure_ != nullptr) {
            std::rethrow_exception(failure_);
        }
        return taken_;
    }

  private:
    struct Finished {
        std::optional<Result> result;
        std::exception_ptr failure;
    };

    /// How far the threads may run ahead of the first result that is not made, for each of them.
    static constexpr std::size_t kAhead = 8;

    void run_one() {
        typename OrderedWork<Result>::Make make;
        while (const std::optional<std::size_t> number = next()) {
            Finished finished;
            try {
                make = make == nullptr ? work_.make_worker() : std::move(make);
                finished.result = make(*number);
            } catch (...) {
                finished.failure = std::current_exception();
            }
            finish(*number, std::move(finished));
        }
    }

    bool is_over() const {
        return is_over_ || (work_.stop != nullptr && *work_.stop) || begun_ == work_.count;
    }

    std::optional<std::size_t> next() {
        std::unique_lock lock(mutex_);
        room_.wait(lock, [this] { return is_over() || begun_ < taken_ + kAhead * work_.threads; });
        return is_over() ? std::nullopt : std::optional(begun_++);
    }

    void finish(std::size_t number, Finished one) {
        const std::lock_guard lock(mutex_);
        finished_.emplace(number, std::move(one));
        while (!is_over_ && !finished_.empty() && finished_.begin()->first == taken_) {
            Finished first = std::move(finished_.extract(finished_.begin()).mapped());
            failure_ = first.failure;
            is_over_ = !first.result.has_value();
            if (!is_over_) {
                take(std::move(*first.result));
            }
        }
        room_.notify_all();
    }

    void take(Result result) {
        try {
            ++taken_;
            work_.take(std::move(result));
        } catch (...) {
            failure_ = std::current_exception();
            is_over_ = true;
        }
    }

    const OrderedWork<Result>& work_;
    std::mutex mutex_;
    std::condition_variable room_;
    std::map<std::size_t, Finished> finished_;  ///< out of order
    std::size_t begun_ = 0;
    std::size_t taken_ = 0;
    bool is_over_ = false;
    std::exception_ptr failure_;
};

template <typename Result>
std::size_t work_in_order(const OrderedWork<Result>& work) {
    return OrderedWorkers<Result>(work).run();
}
