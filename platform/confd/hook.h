/// What every operation does first and last: ask the hook, and note why it failed.
#pragma once

#include <string_view>

#include "call_hook.h"

namespace local_platform {

/// The calling thread's innermost hook. Initial-exec, since every operation looks at it: the
/// library is loaded with the program, so there is room for it in the static TLS block. __thread,
/// since Clang gives an extern thread_local an initialiser that no library can link.
extern __thread const CallHook* current_hook
    __attribute__((tls_model("initial-exec"), visibility("hidden")));

/// What the hook, which there is, answers to a call; nothing when it lets the operation run.
[[gnu::cold]] std::optional<int> hook_result(std::string_view operation, int socket,
                                             std::string_view argument);

/// Notes `reason`, cut to a fixed length, as the calling thread's last failure; returns CONFD_ERR.
[[gnu::cold]] int fail(std::string_view reason, std::string_view path = {});

/// The hook's answer to a call or, without one, what `work` returns.
template <typename Argument, typename Work>
int serve(const char* operation, int socket, const Argument& argument, Work work) {
    if (current_hook != nullptr) {
        if (const auto result = hook_result(operation, socket, argument)) {
            return *result;
        }
    }
    return work();
}

}  // namespace local_platform
