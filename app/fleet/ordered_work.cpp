#include "fleet/ordered_work.h"

#include <malloc.h>

#include <condition_variable>
#include <exception>
#include <map>
#include <mutex>
#include <system_error>
#include <thread>
#include <vector>

namespace {

/// How far the threads may run ahead of the first report that is not done, for each of them.
constexpr std::size_t kAhead = 8;

/// Makes the allocator keep what one report has freed for the next: given back each time, it is
/// fetched again page by page, and the threads wait for each other there.
void keep_freed_memory() {
    mallopt(M_TRIM_THRESHOLD, 256 << 20);
    mallopt(M_MMAP_THRESHOLD, 32 << 20);  // no longer raised as needed once any of these is set
    mallopt(M_TOP_PAD, 4 << 20);
}

class Line {
  public:
    explicit Line(const OrderedWork& work) : work_(work) {}

    /// What every thread does.
    void run() {
        while (const std::optional<std::size_t> number = next()) {
            try {
                finish(*number, work_.make(*number));
            } catch (...) {
                fail(std::current_exception());
            }
        }
    }

    std::size_t taken() const {
        if (failure_ != nullptr) {
            std::rethrow_exception(failure_);
        }
        return taken_;
    }

  private:
    bool is_over() const { return is_over_ || work_.stop || begun_ == work_.count; }

    std::optional<std::size_t> next() {
        std::unique_lock lock(mutex_);
        room_.wait(lock, [this] { return is_over() || begun_ < taken_ + kAhead * work_.threads; });
        return is_over() ? std::nullopt : std::optional(begun_++);
    }

    void finish(std::size_t number, std::optional<Report> report) {
        const std::lock_guard lock(mutex_);
        is_over_ = is_over_ || !report.has_value();
        if (report) {
            finished_.emplace(number, std::move(*report));
        }
        while (!finished_.empty() && finished_.begin()->first == taken_) {
            ++taken_;
            work_.take(std::move(finished_.extract(finished_.begin()).mapped()));
        }
        room_.notify_all();
    }

    void fail(std::exception_ptr failure) {
        const std::lock_guard lock(mutex_);
        failure_ = std::move(failure);
        is_over_ = true;
        room_.notify_all();
    }

    const OrderedWork& work_;
    std::mutex mutex_;
    std::condition_variable room_;
    std::map<std::size_t, Report> finished_;  ///< out of order
    std::size_t begun_ = 0;
    std::size_t taken_ = 0;
    bool is_over_ = false;
    std::exception_ptr failure_;
};

}  // namespace

std::size_t work_in_order(const OrderedWork& work) {
    if (work.count > 1) {
        keep_freed_memory();
    }
    Line line(work);
    std::vector<std::thread> others;
    try {
        for (std::size_t i = 1; i < work.threads && i < work.count; ++i) {
            others.emplace_back([&line] { line.run(); });
        }
    } catch (const std::system_error&) {
        // The threads that there are do the work.
    }
    line.run();
    for (std::thread& other : others) {
        other.join();
    }
    return line.taken();
}
