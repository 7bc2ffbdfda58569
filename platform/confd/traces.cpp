#include "traces.h"

#include <array>
#include <cstring>

namespace local_platform {
namespace {

/// More than what reading a key, or a cipher, needs of the stack.
constexpr std::size_t kDepth = 16384;

void wipe_vector_registers() {
#ifdef __x86_64__
    if (__builtin_cpu_supports("avx") == 0) {
        asm volatile(
            ".irp n,0,1,2,3,4,5,6,7,8,9,10,11,12,13,14,15\n\t"
            "pxor %%xmm\\n, %%xmm\\n\n\t"
            ".endr" ::
                : "memory");
        return;
    }
    asm volatile("vzeroall" ::: "memory");
    if (__builtin_cpu_supports("avx512f") != 0) {
        asm volatile(
            ".irp n,16,17,18,19,20,21,22,23,24,25,26,27,28,29,30,31\n\t"
            "vpxorq %%zmm\\n, %%zmm\\n, %%zmm\\n\n\t"
            ".endr" ::
                : "memory");
    }
#endif
}

}  // namespace

void wipe_traces() {
    std::array<unsigned char, kDepth> dead;  // NOLINT(cppcoreguidelines-pro-type-member-init)
    explicit_bzero(dead.data(), dead.size());
    wipe_vector_registers();
}

}  // namespace local_platform
