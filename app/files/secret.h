/// Text that is wiped when it goes.
#pragma once

#include <cstring>
#include <string>

/// Set its text once: a string that grows would leave pieces behind.
struct Secret {
    Secret() = default;
    Secret(const Secret&) = delete;
    Secret& operator=(const Secret&) = delete;
    ~Secret() { explicit_bzero(text.data(), text.size()); }

    std::string text;
};
