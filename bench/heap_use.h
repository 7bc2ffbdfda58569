/// What a piece of work takes from the heap, in this process's every library.
#pragma once

#include <cstddef>

struct HeapUse {
    std::size_t allocations = 0;
    std::size_t peak_bytes = 0;  ///< the most that it held at one time
};

/// Counting is on from here to stop_counting(), which answers for that time. One thread at a time.
void start_counting();
HeapUse stop_counting();

template <typename Work>
HeapUse heap_use_of(Work work) {
    start_counting();
    work();
    return stop_counting();
}
