#include "hook.h"

#include <array>

#include "value_text.h"

namespace local_platform {
namespace {

constexpr std::size_t kLastErrorSize = 512;

thread_local std::array<char, kLastErrorSize> last_error{};

}  // namespace

__thread const CallHook* current_hook = nullptr;

ScopedCallHook::ScopedCallHook(CallHook hook) : hook_(std::move(hook)), outer_(current_hook) {
    current_hook = &hook_;
}

ScopedCallHook::~ScopedCallHook() {
    current_hook = outer_;
}

std::optional<Answer> ask_hook(const Call& call) {
    return current_hook == nullptr ? std::nullopt : (*current_hook)(call);
}

std::optional<int> hook_result(std::string_view operation, int socket, std::string_view argument) {
    const auto answer = (*current_hook)({operation, socket, argument});
    return answer ? std::optional(answer->result) : std::nullopt;
}

int fail(std::string_view reason, std::string_view path) {
    BoundedText out(last_error.data(), last_error.size());
    out.append(reason);
    if (!path.empty()) {
        out.append(": ");
        out.append(path);
    }
    out.finish();
    return CONFD_ERR;
}

}  // namespace local_platform

const char* confd_lasterr(void) {
    if (const auto answer = local_platform::ask_hook({"confd_lasterr", -1, {}})) {
        return answer->text;
    }
    return local_platform::last_error.data();
}
