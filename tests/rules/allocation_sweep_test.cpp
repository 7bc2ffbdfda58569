// Every allocation of a request fails once.
#include <cstdlib>
#include <new>

#include "rule.h"
#include "socket.h"

// NOLINTBEGIN(cppcoreguidelines-no-malloc, cppcoreguidelines-owning-memory): this is operator new
void* operator new(std::size_t size) {
    const bool fails = allocations.counting && ++allocations.made == allocations.failing;
    void* const memory = fails ? nullptr : std::malloc(size == 0 ? 1 : size);
    return memory != nullptr ? memory : throw std::bad_alloc();
}

[[gnu::noinline]] void operator delete(void* memory) noexcept {
    std::free(memory);
}

[[gnu::noinline]] void operator delete(void* memory, std::size_t /*size*/) noexcept {
    std::free(memory);
}
// NOLINTEND(cppcoreguidelines-no-malloc, cppcoreguidelines-owning-memory)

TEST(AllocationSweep, EveryAllocationFails) {
    std::size_t failed = 0;
    for (const Case& sample : samples()) {
        SCOPED_TRACE(testing::PrintToString(sample));
        Delivery delivery(sample);
        delivery.run();  // The first one reads the paths.
        delivery.run();
        const std::size_t made = allocations.made;
        const int open_before = local_platform::open_sockets();
        for (std::size_t n = 1; n <= made; ++n) {
            EXPECT_EQ(delivery.run({}, n).answer, "exception: std::bad_alloc") << n;
        }
        failed += made;
        EXPECT_EQ(local_platform::open_sockets(), open_before);
    }
    std::printf("[          ] allocations failed: %zu\n", failed);
}
