/// What every operation does first and last: ask the hook, and note why it failed.
#pragma once

#include <string_view>

#include "call_hook.h"

namespace local_platform {

/// Notes `reason` as the calling thread's last failure, and as one `of_model` for
/// take_model_misfit(); returns CONFD_ERR.
int fail(std::string_view reason, std::string_view path = {}, bool of_model = false);

/// The hook's answer to a call or, without one, what `work` returns.
template <typename Work>
int serve(const char* operation, int socket, std::string_view argument, Work work) {
    const std::optional<Answer> answer = ask_hook({operation, socket, argument});
    return answer ? answer->result : work();
}

}  // namespace local_platform
