/// What the paths that a socket was asked for name.
#pragma once

#include <cstring>
#include <memory_resource>
#include <string_view>
#include <unordered_map>

#include "path_lookup.h"

namespace local_platform {

/// Finds paths in one tree, and those that it has found before without reading them: rules ask for
/// the same paths in the same order, request after request, and a tree never changes. Serves one
/// thread at a time.
class PathMemory {
  public:
    explicit PathMemory(const TreeStore& store) : store_(store) {}

    const Lookup& find(const char* path) {
        if (last_ != nullptr) {
            if (last_->next != nullptr && std::strcmp(last_->next->path, path) == 0) {
                last_ = last_->next;
                return last_->found;
            }
            if (std::strcmp(last_->path, path) == 0) {
                return last_->found;
            }
        }
        return find_unexpected(path);
    }

  private:
    struct Memory {
        const char* path;
        Lookup found;
        Memory* next;  ///< what was asked for after it the last time
    };

    const Lookup& find_unexpected(std::string_view path);
    Memory* remember(std::string_view path);

    const TreeStore& store_;
    /// In it they lie in the order in which they will be asked for again. It starts small, for the
    /// sockets that serve one request.
    std::pmr::monotonic_buffer_resource arena_{512};
    std::pmr::unordered_map<std::string_view, Memory> memories_{&arena_};
    Memory* last_ = nullptr;
};

}  // namespace local_platform
