// Every allocation of a request fails once, on a stack that is looked through afterwards.
#include <pthread.h>

#include <cstdlib>
#include <cstring>
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

namespace {

alignas(4096) char stack[1 << 20];

/// Delivers, with allocation `failing` failing, on `stack`.
std::string answer_on_stack(Delivery& delivery, std::size_t failing) {
    std::string answer;
    auto work = [&] { answer = delivery.run({}, failing).answer; };
    pthread_t thread{};
    pthread_attr_t attributes;
    pthread_attr_init(&attributes);
    pthread_attr_setstack(&attributes, stack, sizeof stack);
    const auto start = [](void* argument) -> void* {
        (*static_cast<decltype(work)*>(argument))();
        return nullptr;
    };
    EXPECT_EQ(pthread_create(&thread, &attributes, start, &work), 0);
    pthread_join(thread, nullptr);
    pthread_attr_destroy(&attributes);
    return answer;
}

TEST(AllocationSweep, EveryAllocationFails) {
    std::size_t failed = 0;
    for (const Case& sample : samples()) {
        SCOPED_TRACE(sample.selector + ", " + sample.name);
        Delivery delivery(sample);
        delivery.run();  // The first one reads the paths.
        delivery.run();
        const std::size_t made = allocations.made;
        const int open_before = local_platform::open_sockets();
        for (std::size_t n = 1; n <= made + 1; ++n) {
            EXPECT_EQ(answer_on_stack(delivery, n),
                      n <= made ? "exception: std::bad_alloc" : sample.the<Answer>().text);
            EXPECT_EQ(memmem(stack, sizeof stack, "Pa55wo", 6), nullptr) << "clear text, " << n;
        }
        failed += made;
        EXPECT_EQ(local_platform::open_sockets(), open_before);
    }
    std::printf("[          ] allocations failed: %zu\n", failed);
}

TEST(AllocationSweep, AnAcceptedPasswordIsCheckedWithoutAny) {
    const std::string node = kIpv4Instance + "/authentication/simple-text-password";
    Case accepted("", Candidate{{node, stored("Pa55wor8")}}, Request{node});
    accepted.selector = "vrrp_auth_passwd_validation";
    Delivery delivery(accepted);
    ASSERT_EQ(delivery.run().answer, ok().text);
    const std::size_t made = allocations.made;
    const auto* const encrypted = reinterpret_cast<const char*>(delivery.newval.val.buf.ptr);
    std::string output(delivery.newval.val.buf.size, '\0');
    allocations = {true, 0, 0};
    EXPECT_EQ(confd_decrypt(encrypted, static_cast<int>(output.size()), output.data()), CONFD_OK);
    allocations.counting = false;
    EXPECT_EQ(made, allocations.made) << "but for those of confd_decrypt()";
}

}  // namespace
