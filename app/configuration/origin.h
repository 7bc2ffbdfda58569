/// Where a node was read.
#pragma once

#include <cstddef>
#include <cstdint>

/// The byte at which a node's name begins, in one of a configuration's sources. It fits where a
/// library leaves its user one pointer.
struct Origin {
    std::size_t offset = 0;  ///< below 2 GiB
    std::size_t source = 0;  ///< 0, or 1 for the running file behind an edit
};

/// The one number of all that `origin` says; never 0.
inline std::uintptr_t mark_of(const Origin& origin) {
    return (origin.offset + 1) << 1U | origin.source;
}

/// The origin with this `mark`, which is not 0.
inline Origin origin_of(std::uintptr_t mark) {
    return {(mark >> 1U) - 1, mark & 1U};
}
