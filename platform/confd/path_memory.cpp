#include "path_memory.h"

namespace local_platform {

const Lookup& PathMemory::find_unexpected(std::string_view path) {
    const auto known = memories_.find(path);
    Memory* const memory = known == memories_.end() ? remember(path) : &known->second;
    if (last_ != nullptr) {
        last_->next = memory;
    }
    last_ = memory;
    return memory->found;
}

PathMemory::Memory* PathMemory::remember(std::string_view path) {
    const Lookup found = look_up(store_, path);
    auto* const text = static_cast<char*>(arena_.allocate(path.size() + 1, 1));
    *std::copy(path.begin(), path.end(), text) = '\0';
    return &memories_.try_emplace({text, path.size()}, Memory{text, found, nullptr}).first->second;
}

}  // namespace local_platform
