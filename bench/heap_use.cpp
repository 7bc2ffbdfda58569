#include "heap_use.h"

#include <malloc.h>

#include <algorithm>

// glibc's own, behind the names that are replaced below.
extern "C" {
void* __libc_malloc(std::size_t size);
void* __libc_calloc(std::size_t count, std::size_t size);
void* __libc_realloc(void* block, std::size_t size);
void __libc_free(void* block);
}

namespace {

bool is_counting = false;
std::size_t allocations = 0;
std::ptrdiff_t live_bytes = 0;
std::ptrdiff_t peak_bytes = 0;

void* count_allocation(void* block) {
    if (is_counting) {
        ++allocations;
        live_bytes += static_cast<std::ptrdiff_t>(malloc_usable_size(block));
        peak_bytes = std::max(peak_bytes, live_bytes);
    }
    return block;
}

void count_release(void* block) {
    if (is_counting) {
        live_bytes -= static_cast<std::ptrdiff_t>(malloc_usable_size(block));
    }
}

}  // namespace

// Every library of the process is to find these first.
#pragma GCC visibility push(default)
extern "C" {

void* malloc(std::size_t size) {
    return count_allocation(__libc_malloc(size));
}

void* calloc(std::size_t count, std::size_t size) {
    return count_allocation(__libc_calloc(count, size));
}

void* realloc(void* block, std::size_t size) {
    count_release(block);
    return count_allocation(__libc_realloc(block, size));
}

void free(void* block) {
    count_release(block);
    __libc_free(block);
}
}
#pragma GCC visibility pop

void start_counting() {
    allocations = 0;
    live_bytes = 0;
    peak_bytes = 0;
    is_counting = true;
}

HeapUse stop_counting() {
    is_counting = false;
    return {allocations, static_cast<std::size_t>(peak_bytes)};
}
